// Transparency in the window: the clip card's "Transparent" and the convert studio's warning
// before a run to H.264.
#include "uifixture.h"

#include "session/packviewmodel.h"
#include "ui/studios/convertstudioview.h"

#include <QLabel>

namespace {

class Transparency : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        VideoFacts logo = FakeProbe::defaultVideo();
        logo.videoCodecCode = FakeProbe::code("ap4h");
        logo.hasAlpha = true;
        m_probe->setVideo(QStringLiteral("logo.mov"), logo);
        m_probe->setVideo(QStringLiteral("sting.mov"), logo);
        addClips({"logo.mov", "plain.mov", "sting.mov"});
    }
};

} // namespace

TEST_F(Transparency, ClipCardSaysTransparentOnlyForClipsWithAlpha)
{
    window();
    ASSERT_EQ(vm().clips().size(), 3);
    for (int i : {0, 1}) {
        SCOPED_TRACE(i);
        vm().setSelectedClipID(vm().clips()[i].id);
        QApplication::processEvents();
        const auto *label = window().findChild<QLabel *>(QStringLiteral("selected.transparent"));
        ASSERT_TRUE(label);
        EXPECT_EQ(label->text(), QStringLiteral("Transparent"));
        EXPECT_EQ(label->isVisible(), i == 0);
    }
}

TEST_F(Transparency, StudioCountsClipsLosingAlphaBeforeTheRunToH264)
{
    ConvertStudioView studio(
        context(), m_desktop, [] {}, QDir::tempPath());
    studio.show();
    vm().setConvertOnlyProblems(false);
    vm().setConvertFormat(ArenaConvertFormat::h264);
    EXPECT_TRUE(studio.alphaLossText()->isVisible());
    EXPECT_EQ(studio.alphaLossText()->text(),
              QStringLiteral("2 clips lose their transparency in H.264"));
    vm().setConvertFormat(ArenaConvertFormat::hap); // which clips count is the session's
    EXPECT_FALSE(studio.alphaLossText()->isVisible());
}
