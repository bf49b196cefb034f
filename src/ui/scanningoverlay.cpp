#include "scanningoverlay.h"

#include "apptheme.h"
#include "glasscard.h"
#include "shimmerborder.h"
#include "spinnerring.h"

#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

#include <cmath>

namespace {
constexpr int kCardWidth = 260;
constexpr qreal kRadius = 28;

// A slim accent bar: the stock one draws chunky blocks in Fusion.
class SlimProgress final : public QProgressBar
{
public:
    using QProgressBar::QProgressBar;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF track = QRectF(rect()).adjusted(0, 1, 0, -1);
        const qreal r = track.height() / 2;
        p.setPen(Qt::NoPen);
        p.setBrush(AppTheme::white(0.08));
        p.drawRoundedRect(track, r, r);
        const double share =
            maximum() > minimum() ? double(value() - minimum()) / (maximum() - minimum()) : 0;
        if (share > 0) {
            QLinearGradient g(track.topLeft(), track.topRight());
            g.setColorAt(0, AppTheme::accentGreenDim);
            g.setColorAt(1, AppTheme::accentGreen);
            p.setBrush(g);
            p.drawRoundedRect(QRectF(track.left(), track.top(),
                                     std::max(track.height(), track.width() * share),
                                     track.height()),
                              r, r);
        }
    }
};
} // namespace

ScanningOverlay::ScanningOverlay(QWidget *parent)
    : QWidget(parent)
    , m_card(new QWidget(this))
    , m_spinner(new SpinnerRing(56))
    , m_message(new QLabel)
    , m_progress(new SlimProgress)
    , m_shimmer(new ShimmerBorder(this))
{
    setObjectName(QStringLiteral("scanningOverlay"));
    m_card->setFixedWidth(kCardWidth);
    auto *column = new QVBoxLayout(m_card);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(14);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_message->setFont(AppTheme::font(13, QFont::Medium));
    QPalette pal = m_message->palette();
    pal.setColor(QPalette::WindowText, AppTheme::white(0.9));
    m_message->setPalette(pal);
    column->addWidget(m_message);
    m_progress->setRange(0, 1000);
    m_progress->setFixedHeight(6);
    m_progress->setTextVisible(false);
    m_progress->hide();
    column->addWidget(m_progress);

    m_pulse.setStartValue(1.0);
    m_pulse.setEndValue(1.02);
    m_pulse.setDuration(1100);
    m_pulse.setEasingCurve(QEasingCurve::InOutSine);
    m_pulse.setLoopCount(-1);
    connect(&m_pulse, &QVariantAnimation::currentLoopChanged, this, [this](int loop) {
        m_pulse.setDirection(loop % 2 ? QAbstractAnimation::Backward : QAbstractAnimation::Forward);
    });
    connect(&m_pulse, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_scale = v.toReal();
        update(cardRect().adjusted(-20, -20, 20, 30).toRect());
    });
}

void ScanningOverlay::setMessage(const QString &message)
{
    m_message->setText(message);
    m_card->adjustSize();
    resizeEvent(nullptr);
}

QString ScanningOverlay::message() const
{
    return m_message->text();
}

void ScanningOverlay::setProgress(std::optional<double> progress)
{
    m_progress->setVisible(progress.has_value());
    if (progress)
        m_progress->setValue(static_cast<int>(std::lround(std::clamp(*progress, 0.0, 1.0) * 1000)));
    m_card->adjustSize();
    resizeEvent(nullptr);
}

bool ScanningOverlay::showsProgress() const
{
    return !m_progress->isHidden();
}

double ScanningOverlay::progressValue() const
{
    return m_progress->value() / 1000.0;
}

void ScanningOverlay::setFrozen(bool frozen)
{
    m_frozen = frozen;
    m_spinner->setFrozen(frozen);
    if (frozen) {
        m_pulse.stop();
        m_scale = 1.0;
        m_shimmer->hide();
    } else if (isVisible()) {
        m_pulse.start();
        m_shimmer->show();
    }
}

QRectF ScanningOverlay::cardRect() const
{
    return QRectF(m_card->geometry());
}

void ScanningOverlay::resizeEvent(QResizeEvent *)
{
    const QSize card = m_card->sizeHint().expandedTo(QSize(kCardWidth, 0));
    m_card->setGeometry(QRect(QPoint((width() - card.width()) / 2, (height() - card.height()) / 2),
                              QSize(kCardWidth, card.height())));
    m_shimmer->setGeometry(rect());
    m_shimmer->setFaceRect(cardRect());
}

void ScanningOverlay::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_frozen)
        m_pulse.start();
}

void ScanningOverlay::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_pulse.stop();
}

void ScanningOverlay::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    // The rows stay faintly visible under the veil: the scan adds to what is there.
    p.fillRect(rect(), QColor::fromRgbF(0.03f, 0.03f, 0.035f, 0.55f));
    const QRectF card = cardRect();
    const QPointF c = card.center();
    p.translate(c);
    p.scale(m_scale, m_scale);
    p.translate(-c);
    GlassCard::paintCard(&p, card, kRadius, AppTheme::panelElevated,
                         AppTheme::withAlpha(AppTheme::accentGreen, 0.12), &m_shadow);
}
