#include "packstatus.h"

#include "l10n/l10n.h"

PackStatus PackStatus::checking(qint64 index, qint64 total, const QString &name)
{
    return PackStatus(Kind::checking, index, total, name);
}

PackStatus PackStatus::ready(qint64 count)
{
    return PackStatus(Kind::ready, count);
}

PackStatus PackStatus::saved(const QString &name)
{
    return PackStatus(Kind::saved, 0, 0, name);
}

PackStatus PackStatus::converting(qint64 index, qint64 total, const QString &name)
{
    return PackStatus(Kind::converting, index, total, name);
}

PackStatus PackStatus::converted(qint64 count)
{
    return PackStatus(Kind::converted, count);
}

PackStatus PackStatus::projectSaved(const QString &name)
{
    return PackStatus(Kind::projectSaved, 0, 0, name);
}

PackStatus PackStatus::projectLoaded(qint64 count, qint64 missing)
{
    return PackStatus(Kind::projectLoaded, count, missing);
}

PackStatus PackStatus::watching(const QString &path)
{
    return PackStatus(Kind::watching, 0, 0, path);
}

PackStatus PackStatus::error(const QString &message)
{
    return PackStatus(Kind::error, 0, 0, message);
}

PackStatus PackStatus::exporting(qint64 index, qint64 total, const QString &name)
{
    return PackStatus(Kind::exporting, index, total, name);
}

PackStatus PackStatus::waiting(qint64 count)
{
    return PackStatus(Kind::waiting, count);
}

QString PackStatus::text(const L10n &strings) const
{
    switch (m_kind) {
    case Kind::checking:
        return strings.format(u"scan.checking", {m_first, m_second, m_text});
    case Kind::ready:
        return strings.format(u"scan.ready", {m_first});
    case Kind::saved:
        return strings.format(u"scan.saved", {m_text});
    case Kind::converting:
        return strings.format(u"scan.converting", {m_first, m_second, m_text});
    case Kind::converted:
        return strings.format(u"scan.converted", {m_first});
    case Kind::projectSaved:
        return strings.format(u"project.saved", {m_text});
    case Kind::projectLoaded:
        return strings.format(u"project.loaded", {m_first, m_second});
    case Kind::watching:
        return strings.format(u"watch.active", {m_text});
    case Kind::exporting:
        return strings.format(u"scan.exporting", {m_first, m_second, m_text});
    case Kind::waiting:
        return strings.format(u"watch.waiting", {m_first});
    case Kind::error:
        return m_text; // already worded for the user, never translated
    case Kind::idle:
        return QString();
    case Kind::scanning:
        return strings[u"scan.default"];
    case Kind::empty:
        return strings[u"scan.empty"];
    case Kind::renamed:
        return strings[u"scan.renamed"];
    case Kind::addFirst:
        return strings[u"scan.addFirst"];
    case Kind::noProblems:
        return strings[u"batch.noProblems"];
    case Kind::noAudioToStrip:
        return strings[u"batch.noAudio"];
    }
    return QString();
}
