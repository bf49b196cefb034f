#include "ambientbackground.h"

#include "apptheme.h"
#include "glasscard.h"

#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QRadialGradient>
#include <QTimerEvent>

#include <cmath>

namespace {

constexpr int kFrameMs = 33;
// Glows are smooth, so a quarter-resolution picture scaled up looks the same and costs less.
constexpr int kGlowScale = 4;

struct Glow {
    double x, y;           // centre, as a share of the view
    double radius;         // share of the longer side
    double alpha;          // peak opacity
    double speedX, speedY; // radians per second of the drift
    double colorMix;       // 0: accentGreen, 1: accentGreenDim
};

constexpr Glow kGlows[3] = {
    {0.18, 0.12, 0.55, 0.16, 0.11, 0.07, 0.0},
    {0.86, 0.30, 0.45, 0.10, 0.07, 0.13, 1.0},
    {0.55, 1.02, 0.60, 0.09, 0.05, 0.09, 0.5},
};
constexpr double kDrift = 0.035; // share of the view size

} // namespace

AmbientBackground::AmbientBackground(double intensity, QWidget *parent)
    : QWidget(parent), m_intensity(intensity)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_clock.start();
}

void AmbientBackground::setFrozen(bool frozen)
{
    m_frozen = frozen;
    updateRunning();
    update();
}

void AmbientBackground::resizeEvent(QResizeEvent *event)
{
    rebuild();
    QWidget::resizeEvent(event);
}

void AmbientBackground::rebuild()
{
    if (width() <= 0 || height() <= 0)
        return;
    QPixmap base(size());
    {
        QPainter p(&base);
        QLinearGradient g(0, 0, 0, height());
        g.setColorAt(0, AppTheme::ink.lighter(118));
        g.setColorAt(0.45, AppTheme::ink);
        g.setColorAt(1, AppTheme::ink.darker(130));
        p.fillRect(base.rect(), g);
    }
    m_base = base;
    const double side = std::max(width(), height());
    for (int i = 0; i < 3; ++i) {
        const int r = std::max(8, static_cast<int>(side * kGlows[i].radius / kGlowScale));
        QImage image(2 * r, 2 * r, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter p(&image);
        const QColor a = AppTheme::accentGreen;
        const QColor b = AppTheme::accentGreenDim;
        const double m = kGlows[i].colorMix;
        QColor c = QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * m,
                                    a.greenF() + (b.greenF() - a.greenF()) * m,
                                    a.blueF() + (b.blueF() - a.blueF()) * m);
        QRadialGradient g(QPointF(r, r), r);
        const double peak = kGlows[i].alpha * m_intensity;
        g.setColorAt(0, AppTheme::withAlpha(c, peak));
        g.setColorAt(0.5, AppTheme::withAlpha(c, peak * 0.35));
        g.setColorAt(1, AppTheme::withAlpha(c, 0));
        p.fillRect(image.rect(), g);
        p.end();
        m_glows[i] =
            QPixmap::fromImage(image.scaled(2 * r * kGlowScale, 2 * r * kGlowScale,
                                            Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
}

std::array<QPoint, 3> AmbientBackground::glowPositions() const
{
    const double t = m_frozen ? 0.0 : m_clock.elapsed() / 1000.0;
    std::array<QPoint, 3> at;
    for (int i = 0; i < 3; ++i) {
        const Glow &g = kGlows[i];
        const double cx = width() * (g.x + kDrift * std::sin(t * g.speedX + i));
        const double cy = height() * (g.y + kDrift * std::cos(t * g.speedY + 2 * i));
        const QPixmap &pm = m_glows[i];
        at[i] = QPoint(static_cast<int>(std::lround(cx - pm.width() / 2.0)),
                       static_cast<int>(std::lround(cy - pm.height() / 2.0)));
    }
    return at;
}

void AmbientBackground::paintEvent(QPaintEvent *event)
{
    if (m_base.size() != size())
        rebuild();
    QPainter p(this);
    // Card faces are opaque and paint over all of this: a click that repaints a card then
    // costs only its corners and shadow here.
    p.setClipRegion(event->region() & exposedRegion());
    p.drawPixmap(0, 0, m_base);
    m_painted = glowPositions();
    for (int i = 0; i < 3; ++i)
        p.drawPixmap(m_painted[i], m_glows[i]);
}

QRegion AmbientBackground::exposedRegion() const
{
    QRegion region(rect());
    const QList<GlassCard *> cards = findChildren<GlassCard *>();
    for (const GlassCard *card : cards) {
        if (!card->isVisible())
            continue;
        // Inset by the corner so the rounded corners, which show the backdrop, still redraw;
        // only the part on screen counts (a card scrolled half out of a list covers less).
        // What sits on the face (an opaque list, say) covers it as well, so the face is clipped
        // by the card's ancestors only.
        QRect face = card->faceRect().adjusted(14, 14, -14, -14).toRect();
        const QWidget *w = card;
        for (; w && w != this && !face.isEmpty(); w = w->parentWidget())
            face = face.translated(w->pos()) & w->parentWidget()->rect();
        if (w == this && !face.isEmpty())
            region -= face;
    }
    return region;
}

void AmbientBackground::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    // The glows drift a few pixels a second: most ticks would paint the same picture again.
    if (glowPositions() != m_painted)
        update(exposedRegion());
}

void AmbientBackground::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    updateRunning();
}

void AmbientBackground::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    updateRunning();
}

void AmbientBackground::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::ActivationChange)
        updateRunning();
}

void AmbientBackground::updateRunning()
{
    const bool onScreen =
        isVisible() && window() && !(window()->windowState() & Qt::WindowMinimized);
    if (onScreen && !m_frozen) {
        if (!m_timer.isActive())
            m_timer.start(kFrameMs, Qt::CoarseTimer, this);
    } else {
        m_timer.stop();
    }
}
