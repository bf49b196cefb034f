#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

// An outline that slowly turns its light around a rounded rectangle (radius 28): an angular
// gradient of the accent fading out, one turn every 8 seconds. Lies over its parent's face,
// lets every mouse event through, and ticks only while shown.
class ShimmerBorder final : public QWidget
{
    Q_OBJECT
public:
    explicit ShimmerBorder(QWidget *parent);
    void setFaceRect(const QRectF &face)
    {
        m_face = face;
        update();
    }
    bool isAnimating() const { return m_timer.isActive(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QRectF m_face;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
};
