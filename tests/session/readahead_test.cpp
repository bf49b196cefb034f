// Reading ahead changes when the disk is waited for, never what an ingest shows or finds.
#include "sessionfixture.h"

#include "media/ffmpeg/ffmpegprobe.h"

#include <QCoroTask>
#include <QThread>

namespace {

// The product's probe, taking its time as on a loaded machine, so that the readers ahead get to
// open the next files first and the probe reads what they hold.
class UnhurriedProbe final : public MediaProbe
{
public:
    VideoFacts probeVideo(const QString &path, std::stop_token stop) const override
    {
        QThread::msleep(40);
        return m_probe.probeVideo(path, std::move(stop));
    }
    ImageFacts probeImage(const QString &path, std::stop_token stop) const override
    {
        return m_probe.probeImage(path, std::move(stop));
    }

private:
    FfmpegProbe m_probe;
};

class ReadAheadIngest : public SessionTest
{
protected:
    std::shared_ptr<const MediaProbe> probeForSession() override
    {
        return std::make_shared<UnhurriedProbe>();
    }

    // Statuses, then one line per clip with everything the probe and fingerprint found.
    QStringList ingestShow(ReadAhead::Options readAhead)
    {
        m_readAhead = std::move(readAhead);
        recordStatuses();
        QCoro::waitFor(vm().ingest({url(QStringLiteral(CUEBOX_CLI_MEDIA "/show"))}));
        QStringList seen = m_statuses;
        for (const MediaClip &clip : vm().clips()) {
            QStringList issues;
            for (const ClipIssue &issue : clip.issues)
                issues.append(rawValue(issue.kind));
            seen.append(QStringList{clip.arenaName, clip.resolutionLabel(),
                                    QString::number(clip.duration.value_or(-1)),
                                    clip.videoCodec.value_or("-"),
                                    clip.contentFingerprint.value_or("-"), issues.join(',')}
                            .join(u'|'));
        }
        return seen;
    }
};

} // namespace

TEST_F(ReadAheadIngest, SlowReadsGiveTheStatusesOrderAndClipsOfAPlainIngest)
{
    ReadAhead::Options plain;
    plain.depth = 0;
    const QStringList expected = ingestShow(plain);
    ASSERT_EQ(vm().clips().size(), 4);
    ASSERT_GE(expected.size(), 4 + 4 + 2); // scanning, four checks, ready; four clips

    m_vm.reset();
    m_statuses.clear();
    ReadAhead::Options slow;
    slow.depth = 3;
    slow.readers = 2;
    slow.beforeOpen = [](const QString &) { QThread::msleep(30); };
    EXPECT_EQ(ingestShow(slow), expected);
}
