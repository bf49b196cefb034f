#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

// The current time, injectable so that tests can fix it.
using Clock = std::function<QDateTime()>;
Clock systemClock();

// "2026-11-16T21:42:48Z": UTC, whole seconds.
QString isoTimestamp(const QDateTime &time);
// "2026-11-16T21-42-48Z": the same with every ":" replaced, safe in folder names.
QString folderTimestamp(const QDateTime &time);
