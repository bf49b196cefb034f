#pragma once

#include <QString>

// A table text for a menu item, a toolbar title or a dialog button, where Qt reads "&" as the
// mark of a mnemonic and hides it: every "&" is doubled so that it shows as written ("Warn &
// Fail"). Only the menu bar's own titles carry a mnemonic, and those are set as they stand.
inline QString withoutMnemonic(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}
