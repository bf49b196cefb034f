#include "timestamp.h"

#include <QTimeZone>

Clock systemClock()
{
    return [] { return QDateTime::currentDateTimeUtc(); };
}

QString isoTimestamp(const QDateTime &time)
{
    QDateTime utc = time.toUTC();
    utc.setTime(QTime(utc.time().hour(), utc.time().minute(), utc.time().second()));
    return utc.toString(Qt::ISODate);
}

QString folderTimestamp(const QDateTime &time)
{
    return isoTimestamp(time).replace(u':', u'-');
}
