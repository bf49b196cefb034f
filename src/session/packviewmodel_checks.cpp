// Room on the target before writing, and verifying a pack against its checksums.
#include "packviewmodel.h"

#include "l10n/apppreferences.h"
#include "model/pathnames.h"
#include "session/platform.h"
#include "session/progressbox.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent>

QCoro::Task<bool> PackViewModel::checkRoom(QString folder, std::function<qint64()> neededBytes,
                                           void (PackViewModel::*endBusy)(bool))
{
    QPointer<PackViewModel> self(this);
    const RoomCheck::FreeSpace freeSpace = m_services.freeSpace;
    // Sizes and free space come from the file system, which may be a slow share.
    QFuture<std::optional<RoomCheck::Shortfall>> checking =
        QtConcurrent::run([=] { return RoomCheck::check(folder, neededBytes(), freeSpace); });
    const std::optional<RoomCheck::Shortfall> shortfall = co_await checking;
    if (!self)
        co_return false;
    if (shortfall) {
        (this->*endBusy)(false);
        setStatus(
            PackStatus::noRoom(shortfall->target, shortfall->neededBytes, shortfall->freeBytes));
        co_return false;
    }
    co_return true;
}

void PackViewModel::verifyPack()
{
    if (!m_services.panels || m_isVerifying)
        return;
    // The pack just exported is the likeliest one to check.
    std::optional<QString> start;
    if (m_lastExportURL)
        start = m_lastExportURL->toLocalFile();
    const std::optional<QString> chosen = m_services.panels->chooseFolder(
        text("panel.verify.message"), text("panel.verify.prompt"), start);
    if (chosen)
        verifyPackAt(*chosen);
}

QCoro::Task<> PackViewModel::verifyPackAt(QString folder)
{
    if (m_isVerifying)
        co_return;
    QPointer<PackViewModel> self(this);
    m_verifyStop = std::stop_source();
    const std::stop_token stop = m_verifyStop.get_token();
    m_lastVerifyReport.reset();
    setVerifyProgress(0.0);
    setVerifying(true);
    setStatus(PackStatus::verifying(0, 0, PathNames::lastComponent(folder)));
    auto box = std::make_shared<ProgressBox<PackVerifier::Progress>>();
    auto sampler =
        sampleProgress<PackVerifier::Progress>(this, box, [this](const PackVerifier::Progress &p) {
            setStatus(PackStatus::verifying(p.filesDone, p.filesTotal, p.fileName));
            setVerifyProgress(p.bytesTotal > 0 ? double(p.bytesDone) / double(p.bytesTotal) : 0.0);
        });
    QFuture<Result<PackVerifier::Report>> future = QtConcurrent::run([=] {
        return PackVerifier::verify(
            folder, [box](const PackVerifier::Progress &p) { box->store(p); }, stop);
    });
    const Result<PackVerifier::Report> report = co_await future;
    if (!self)
        co_return;
    sampler.reset();
    setVerifying(false);
    if (!report) {
        if (report.error().kind == Error::Kind::Invalid)
            setStatus(PackStatus::noChecksums(folder));
        else if (report.error().kind == Error::Kind::Cancelled)
            setStatus(PackStatus::error(QStringLiteral("Cancelled")));
        else
            setStatus(PackStatus::error(report.error().message + QStringLiteral(": ") +
                                        report.error().path));
        co_return;
    }
    m_lastVerifyReport = *report;
    setVerifyProgress(1.0);
    if (report->passed()) {
        setStatus(PackStatus::verified(report->checked));
        co_return;
    }
    const PackVerifier::Finding &first = report->findings.front();
    setStatus(PackStatus::verifyFailed(int(first.problem), report->findings.size(), first.path));
}

void PackViewModel::cancelVerify()
{
    m_verifyStop.request_stop();
}
