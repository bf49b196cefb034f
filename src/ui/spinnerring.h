#pragma once

#include <QVariantAnimation>
#include <QWidget>

// The busy ring: a faint 3-pixel circle with a gradient arc turning once every 1.1 s. The arc
// runs only while the ring is shown.
class SpinnerRing final : public QWidget
{
    Q_OBJECT
public:
    explicit SpinnerRing(int diameter = 56, QWidget *parent = nullptr);
    bool isSpinning() const { return m_turn.state() == QAbstractAnimation::Running; }
    // Screenshots and tests stop time at one angle.
    void setFrozen(bool frozen);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QVariantAnimation m_turn;
    qreal m_angle = 0;
    bool m_frozen = false;
};
