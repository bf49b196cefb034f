#include "packstatus.h"

#include "l10n/l10n.h"
#include "model/mediaclip.h"
#include "output/packverifier.h"

#include <QLocale>

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

PackStatus PackStatus::noRoom(const QString &target, qint64 neededBytes, qint64 freeBytes)
{
    return PackStatus(Kind::noRoom, neededBytes, freeBytes, target);
}

PackStatus PackStatus::backingUp(qint64 index, qint64 total, const QString &name)
{
    return PackStatus(Kind::backingUp, index, total, name);
}

PackStatus PackStatus::verifying(qint64 index, qint64 total, const QString &name)
{
    return PackStatus(Kind::verifying, index, total, name);
}

PackStatus PackStatus::verified(qint64 count)
{
    return PackStatus(Kind::verified, count);
}

PackStatus PackStatus::verifyFailed(int problem, qint64 problems, const QString &name)
{
    return PackStatus(Kind::verifyFailed, problem, problems, name);
}

PackStatus PackStatus::noChecksums(const QString &folder)
{
    return PackStatus(Kind::noChecksums, 0, 0, folder);
}

bool PackStatus::isFailure() const
{
    return m_kind == Kind::error || m_kind == Kind::noRoom || m_kind == Kind::verifyFailed ||
           m_kind == Kind::noChecksums;
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
    case Kind::noRoom:
        // The window's size units, with "." whatever the system's locale.
        return strings.format(u"space.notEnough", {m_text, formatFileSize(m_first, QLocale::c()),
                                                   formatFileSize(m_second, QLocale::c())});
    case Kind::backingUp:
        return strings.format(u"scan.backingUp", {m_first, m_second, m_text});
    case Kind::verifying:
        return strings.format(u"scan.verifying", {m_first, m_second, m_text});
    case Kind::verified:
        return strings.format(u"scan.verified", {m_first});
    case Kind::verifyFailed: {
        const auto problem = static_cast<PackVerifier::Problem>(m_first);
        return strings.format(
            u"verify.failed",
            {m_second, strings.format(PackVerifier::problemKey(problem), {m_text})});
    }
    case Kind::noChecksums:
        return strings.format(u"verify.noChecksums", {m_text});
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
