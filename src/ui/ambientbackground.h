#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPixmap>
#include <QWidget>

#include <array>

// The window's backdrop: a vertical gradient over `ink` with three soft green glows drifting
// slowly. It redraws about 30 times a second, but only while it is on screen, and only the
// parts no opaque card covers; the glows are pre-rendered once per size, so a frame is three
// pixmap blits.
class AmbientBackground final : public QWidget
{
    Q_OBJECT
public:
    explicit AmbientBackground(double intensity = 1.0, QWidget *parent = nullptr);

    bool isAnimating() const { return m_timer.isActive(); }
    // Tests and screenshots freeze time for reproducible pictures.
    void setFrozen(bool frozen);
    // The region a frame must redraw: everything except the faces of cards above it.
    QRegion exposedRegion() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void updateRunning();
    void rebuild();

    double m_intensity;
    bool m_frozen = false;
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
    std::array<QPoint, 3> m_painted{}; // where the glows were last drawn
    std::array<QPoint, 3> glowPositions() const;
    QPixmap m_base;
    QPixmap m_glows[3];
};
