#pragma once

#include "l10n/apppreferences.h"
#include "l10n/localizationmanager.h"
#include "media/fake/fakeconversion.h"
#include "media/fake/fakeprobe.h"
#include "output/packexporter.h"
#include "session/packviewmodel.h"
#include "session/platform.h"
#include "support/files.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDirIterator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <deque>

// Runs the event loop until `done` holds or the time is up.
inline bool waitUntil(const std::function<bool()> &done, int timeoutMs = 10000)
{
    QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Bytes and modification time of every file below `folder`: an operation must leave sources so.
inline QMap<QString, QPair<QByteArray, QDateTime>> folderSnapshot(const QString &folder)
{
    QMap<QString, QPair<QByteArray, QDateTime>> out;
    for (QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString file = it.next();
        out.insert(file, {readFile(file), QFileInfo(file).lastModified()});
    }
    return out;
}

// Panels answered from a script, in order; an empty answer means the user cancelled.
class ScriptedPanels final : public Panels
{
public:
    std::deque<QList<QUrl>> media;
    std::deque<std::optional<QString>> folders;
    std::deque<std::optional<QString>> files;
    QStringList messages; // every panel's message, in order
    std::optional<QString> lastStartFolder;
    QString lastProposedName;

    QList<QUrl> openMedia(const QString &message, const QString &) override
    {
        return answer(message, media);
    }
    std::optional<QString> chooseFolder(const QString &message, const QString &,
                                        const std::optional<QString> &start) override
    {
        lastStartFolder = start;
        return answer(message, folders);
    }
    std::optional<QString> chooseSaveFile(const QString &message, const QString &,
                                          const QString &proposed,
                                          const std::optional<QString> &start) override
    {
        lastProposedName = proposed;
        lastStartFolder = start;
        return answer(message, files);
    }
    std::optional<QString> chooseOpenFile(const QString &message, const QString &) override
    {
        return answer(message, files);
    }

private:
    // The next scripted answer, or an empty one (cancelled) when the script ran out.
    template<typename T>
    T answer(const QString &message, std::deque<T> &queue)
    {
        messages.append(message);
        T value{};
        if (!queue.empty()) {
            std::swap(value, queue.front());
            queue.pop_front();
        }
        return value;
    }
};

class RecordingDesktop final : public Desktop
{
public:
    QStringList revealed;
    QList<QPair<QStringList, QString>> opened;
    QList<QUrl> urls;
    void reveal(const QString &path) override { revealed.append(path); }
    void openWithApplication(const QStringList &f, const QString &app) override
    {
        opened.append({f, app});
    }
    void openUrl(const QUrl &url) override { urls.append(url); }
};

// A session over a temporary folder with a fake media layer, scripted panels and private
// preferences.
class SessionTest : public ::testing::Test
{
protected:
    SessionTest()
        : m_settings(m_dir.filePath("prefs.conf"), QSettings::IniFormat)
        , m_localization(m_settings)
        , m_preferences(m_settings)
        , m_probe(std::make_shared<FakeProbe>())
        , m_conversion(std::make_shared<FakeConversion>())
    {}

    PackViewModel &vm()
    {
        if (!m_vm) {
            PackViewModel::Services services;
            services.probe = probeForSession();
            services.conversion = conversionForSession();
            services.panels = &m_panels;
            services.desktop = &m_desktop;
            services.localization = &m_localization;
            services.preferences = &m_preferences;
            services.copyFile = m_copyFile;
            services.readAhead = m_readAhead;
            services.freeSpace = m_freeSpace;
            services.requestThumbnail = [this](const MediaClip &clip) {
                m_thumbnailRequests.append(clip.sourcePath());
            };
            services.clock = [] {
                return QDateTime(QDate(2026, 11, 16), QTime(21, 42, 48), QTimeZone::utc());
            };
            m_vm = std::make_unique<PackViewModel>(services);
        }
        return *m_vm;
    }

    virtual std::shared_ptr<const MediaProbe> probeForSession() { return m_probe; }
    virtual std::shared_ptr<const MediaConversion> conversionForSession() { return m_conversion; }

    QString path(const QString &relative) const { return m_dir.filePath(relative); }
    // Distinct sizes by default, so that files never match as duplicates by accident.
    QString touch(const QString &relative, QByteArray bytes = {})
    {
        if (bytes.isEmpty())
            bytes = relative.toUtf8() + QByteArray(++m_touches, 'x');
        return QFileInfo(writeFile(path(relative), bytes)).canonicalFilePath();
    }
    static QUrl url(const QString &p) { return QUrl::fromLocalFile(p); }
    // Adds the file or folder `relative` to the pack and waits until the ingest is over.
    void ingest(const QString &relative) { QCoro::waitFor(vm().ingest({url(path(relative))})); }
    // Makes `files` in the folder `relative`, in order, then ingests that folder.
    void ingestNew(const QString &relative, const QStringList &files)
    {
        for (const QString &file : files)
            touch(relative + u'/' + file);
        ingest(relative);
    }
    // Watches the folder `relative` until its first ingest has brought `clips` clips.
    void watch(const QString &relative, int clips)
    {
        QDir().mkpath(path(relative));
        vm().startWatching(path(relative));
        ASSERT_TRUE(waitUntil([&] { return vm().clips().size() == clips && !vm().isScanning(); }));
    }
    // `name` probes as a movie with one AAC audio track (a warning).
    void withAudio(const QString &name)
    {
        VideoFacts facts = FakeProbe::defaultVideo();
        facts.audioTrackCount = 1;
        facts.audioCodecCode = FakeProbe::code("aac ");
        m_probe->setVideo(name, facts);
    }
    // `name` probes as ProRes 4444 with an alpha channel.
    void withAlpha(const QString &name)
    {
        VideoFacts facts = FakeProbe::defaultVideo();
        facts.videoCodecCode = FakeProbe::code("ap4h");
        facts.hasAlpha = true;
        m_probe->setVideo(name, facts);
    }
    QStringList names(QString MediaClip::*field)
    {
        QStringList out;
        for (const MediaClip &c : vm().clips())
            out.append(c.*field);
        return out;
    }
    QStringList arenaNames() { return names(&MediaClip::arenaName); }
    QStringList originalNames() { return names(&MediaClip::originalName); }
    // Every status the session shows from now on, as English text.
    QStringList &recordStatuses()
    {
        QObject::connect(&vm(), &PackViewModel::statusChanged, [this] {
            m_statuses.append(vm().status().text(L10n(AppLanguage::english)));
        });
        return m_statuses;
    }

    QTemporaryDir m_dir;
    QSettings m_settings;
    LocalizationManager m_localization;
    AppPreferences m_preferences;
    std::shared_ptr<FakeProbe> m_probe;
    std::shared_ptr<FakeConversion> m_conversion;
    ScriptedPanels m_panels;
    RecordingDesktop m_desktop;
    PackExporter::CopyFile m_copyFile;
    ReadAhead::Options m_readAhead;
    RoomCheck::FreeSpace m_freeSpace;
    std::unique_ptr<PackViewModel> m_vm;
    QStringList m_statuses;
    int m_touches = 0;
    QStringList m_thumbnailRequests;
};
