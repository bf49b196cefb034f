#pragma once

#include "l10n/l10n.h"

#include <QString>

class AppPreferences;
class LocalizationManager;
class PackViewModel;
class ThumbnailCache;

// What every view of the window reads: the session, the language and the preferences, and the
// shared thumbnail cache. Views keep no state of the pack; they read it here and call the
// session's operations.
struct UiContext {
    PackViewModel &viewModel;
    LocalizationManager &localization;
    AppPreferences &preferences;
    ThumbnailCache &thumbnails;

    L10n strings() const;
    QString text(QStringView key) const;
    bool compact() const;
};
