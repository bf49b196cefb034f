#pragma once

#include <QString>

#include <atomic>

class L10n;
class PackViewModel;

// `cuebox watch`: the window's watch folder without the window.
namespace WatchVerb {

// Watches `folder` and prints one line per clip as it is added, changed or gone, until
// `interrupted` is set (exit status 130) or the folder goes away (1).
int run(PackViewModel &session, const QString &folder, bool json, const L10n &strings,
        const std::atomic<bool> &interrupted);

} // namespace WatchVerb
