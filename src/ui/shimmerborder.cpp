#include "shimmerborder.h"

#include "apptheme.h"

#include <QConicalGradient>
#include <QPainter>
#include <QTimerEvent>

namespace {
constexpr double kTurnSeconds = 8.0;
// A turn of 8 s moves the light about a pixel per frame at 20 fps on a card this size.
constexpr int kFrameMs = 50;
constexpr qreal kRadius = 28;
} // namespace

ShimmerBorder::ShimmerBorder(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    m_clock.start();
}

void ShimmerBorder::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF face = m_face.isValid() ? m_face : QRectF(rect());
    const double phase = std::fmod(m_clock.elapsed() / 1000.0 / kTurnSeconds, 1.0) * 360.0;
    QConicalGradient g(face.center(), -phase);
    g.setColorAt(0.0, AppTheme::withAlpha(AppTheme::accentGreen, 0.4));
    g.setColorAt(0.35, AppTheme::withAlpha(AppTheme::accentGreen, 0.05));
    g.setColorAt(0.65, AppTheme::withAlpha(AppTheme::accentGreen, 0.05));
    g.setColorAt(1.0, AppTheme::withAlpha(AppTheme::accentGreen, 0.4));
    p.setPen(QPen(QBrush(g), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(face.adjusted(0.75, 0.75, -0.75, -0.75), kRadius, kRadius);
}

void ShimmerBorder::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_timer.start(kFrameMs, Qt::CoarseTimer, this);
}

void ShimmerBorder::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void ShimmerBorder::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer.timerId())
        update();
    else
        QWidget::timerEvent(event);
}
