#include "uicontext.h"

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"

L10n UiContext::strings() const
{
    return localization.strings();
}

QString UiContext::text(QStringView key) const
{
    return strings()[key];
}

bool UiContext::compact() const
{
    return preferences.compactMode();
}
