// The session over real media made by the ffmpeg CLI, with the product's own media layer.
#include "sessionfixture.h"

#include "media/ffmpeg/ffmpegprobe.h"

#include <QCoroTask>
#include <QDirIterator>

namespace {

const QString kShow = QStringLiteral(CUEBOX_CLI_MEDIA "/show");

class RealMedia : public SessionTest
{
protected:
    std::shared_ptr<const MediaProbe> probeForSession() override
    {
        return std::make_shared<FfmpegProbe>();
    }
    PackViewModel &session() { return vm(); }
    static QMap<QString, QPair<QByteArray, QDateTime>> sources()
    {
        QMap<QString, QPair<QByteArray, QDateTime>> out;
        QDirIterator it(kShow, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            file.open(QIODevice::ReadOnly);
            out.insert(file.fileName(), {file.readAll(), QFileInfo(file).lastModified()});
        }
        return out;
    }
};

} // namespace

TEST_F(RealMedia, IngestJudgesExportsAndReloadsWithoutTouchingSources)
{
    const auto before = sources();
    QCoro::waitFor(session().ingest({url(kShow)}));
    ASSERT_EQ(session().clips().size(), 4);
    QStringList names;
    QList<ClipHealth> healths;
    for (const MediaClip &clip : session().clips()) {
        names.append(clip.arenaName);
        healths.append(clip.health());
    }
    EXPECT_EQ(names, (QStringList{"01_band_intro", "02_logo", "03_notes", "04_opening"}));
    EXPECT_EQ(healths, (QList<ClipHealth>{ClipHealth::warn, ClipHealth::ok, ClipHealth::fail,
                                          ClipHealth::ok}));
    const MediaClip &band = session().clips()[0];
    EXPECT_EQ(band.resolutionLabel(), "1920×1080");
    EXPECT_EQ(band.videoCodec, "avc1");
    EXPECT_EQ(band.audioCodec, "aac");
    EXPECT_EQ(session().clipsWithAudioCount(), 1);

    QDir().mkpath(path("out"));
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(session().exportPack());
    ASSERT_EQ(session().status().kind(), PackStatus::Kind::saved)
        << session().statusText().toStdString();
    const QString pack = session().lastExportURL()->toLocalFile();
    EXPECT_EQ(QDir(pack + "/media").entryList(QDir::Files),
              (QStringList{"01_band_intro.MP4", "02_logo.png", "03_notes.mov", "04_opening.mov"}));
    QFile copy(pack + "/media/04_opening.mov");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), before.value(kShow + "/Opening.mov").first);

    m_panels.files.push_back(path("show.cuebox.json"));
    session().saveProject();
    const QList<MediaClip> saved = session().clips();
    m_vm.reset();
    QCoro::waitFor(session().loadProject(path("show.cuebox.json")));
    EXPECT_EQ(session().status(), PackStatus::ready(4));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(session().clips()[i].id, saved[i].id);
        EXPECT_EQ(session().clips()[i].health(), saved[i].health());
        EXPECT_EQ(session().clips()[i].width, saved[i].width);
    }
    EXPECT_EQ(sources(), before);
}
