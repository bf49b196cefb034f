// The session over real media made by the ffmpeg CLI, with the product's own media layer.
#include "sessionfixture.h"

#include "media/ffmpeg/ffmpegprobe.h"

namespace {

const QString kShow = QStringLiteral(CUEBOX_CLI_MEDIA "/show");

class RealMedia : public SessionTest
{
protected:
    std::shared_ptr<const MediaProbe> probeForSession() override
    {
        return std::make_shared<FfmpegProbe>();
    }
};

} // namespace

TEST_F(RealMedia, IngestJudgesExportsAndReloadsWithoutTouchingSources)
{
    const auto before = folderSnapshot(kShow);
    QCoro::waitFor(vm().ingest({url(kShow)}));
    ASSERT_EQ(vm().clips().size(), 4);
    EXPECT_EQ(arenaNames(), (QStringList{"01_band_intro", "02_logo", "03_notes", "04_opening"}));
    QList<ClipHealth> healths;
    for (const MediaClip &clip : vm().clips())
        healths.append(clip.health());
    EXPECT_EQ(healths, (QList<ClipHealth>{ClipHealth::warn, ClipHealth::ok, ClipHealth::fail,
                                          ClipHealth::ok}));
    EXPECT_EQ(vm().clipsWithAudioCount(), 1); // what the probe reads is its own tests'

    QDir().mkpath(path("out"));
    m_panels.folders.push_back(path("out"));
    QCoro::waitFor(vm().exportPack());
    ASSERT_EQ(vm().status().kind(), PackStatus::Kind::saved) << vm().statusText().toStdString();
    const QString pack = vm().lastExportURL()->toLocalFile();
    EXPECT_EQ(QDir(pack + "/media").entryList(QDir::Files),
              (QStringList{"01_band_intro.MP4", "02_logo.png", "03_notes.mov", "04_opening.mov"}));
    EXPECT_EQ(readFile(pack + "/media/04_opening.mov"), before.value(kShow + "/Opening.mov").first);

    m_panels.files.push_back(path("show.cuebox.json"));
    vm().saveProject();
    const QList<MediaClip> saved = vm().clips();
    m_vm.reset();
    QCoro::waitFor(vm().loadProject(path("show.cuebox.json")));
    EXPECT_EQ(vm().status(), PackStatus::ready(4));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(vm().clips()[i].id, saved[i].id);
        EXPECT_EQ(vm().clips()[i].health(), saved[i].health());
        EXPECT_EQ(vm().clips()[i].width, saved[i].width);
    }
    EXPECT_EQ(folderSnapshot(kShow), before);
}
