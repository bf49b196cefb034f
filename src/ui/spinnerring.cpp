#include "spinnerring.h"

#include "apptheme.h"

#include <QConicalGradient>
#include <QPainter>

SpinnerRing::SpinnerRing(int diameter, QWidget *parent) : QWidget(parent)
{
    setFixedSize(diameter, diameter);
    m_turn.setStartValue(0.0);
    m_turn.setEndValue(360.0);
    m_turn.setDuration(1100);
    m_turn.setLoopCount(-1);
    m_turn.setEasingCurve(QEasingCurve::Linear);
    connect(&m_turn, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_angle = v.toReal();
        update();
    });
}

void SpinnerRing::setFrozen(bool frozen)
{
    m_frozen = frozen;
    if (frozen) {
        m_turn.stop();
        m_angle = 40;
        update();
    } else if (isVisible()) {
        m_turn.start();
    }
}

void SpinnerRing::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(2, 2, -2, -2);
    p.setPen(QPen(AppTheme::white(0.08), 3));
    p.drawEllipse(r);
    QConicalGradient g(r.center(), -m_angle);
    g.setColorAt(0, AppTheme::accentGreen);
    g.setColorAt(0.7, AppTheme::withAlpha(AppTheme::accentGreenDim, 0.0));
    g.setColorAt(1, AppTheme::withAlpha(AppTheme::accentGreen, 0.0));
    QPen arc(QBrush(g), 3);
    arc.setCapStyle(Qt::RoundCap);
    p.setPen(arc);
    // Qt angles are sixteenths of a degree, counter-clockwise; the arc trails its head.
    p.drawArc(r, static_cast<int>(-m_angle * 16), 250 * 16);
}

void SpinnerRing::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_frozen)
        m_turn.start();
}

void SpinnerRing::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_turn.stop();
}
