#pragma once

#include "model/clipissue.h"

#include <QVariantAnimation>
#include <QWidget>

class L10n;

// The verdict capsule: a dot and the short label in upper case, tinted by health. Ok and warn
// badges breathe (the dot's glow grows and fades every 1.2 s); fail and unknown stay still so
// that the eye goes to them.
namespace StatusBadgeLook {
QString label(ClipHealth health, const L10n &strings);
QSize size(const QString &label, const QFont &font);
// `glow` runs from 0 (quiet) to 1 (brightest).
void paint(QPainter *painter, const QRectF &rect, ClipHealth health, const QString &label,
           const QFont &font, qreal glow);
bool pulses(ClipHealth health);
QFont font();
} // namespace StatusBadgeLook

class StatusBadge final : public QWidget
{
    Q_OBJECT
public:
    explicit StatusBadge(QWidget *parent = nullptr);
    void setHealth(ClipHealth health, const QString &label);
    ClipHealth health() const { return m_health; }
    QString label() const { return m_label; }
    bool isPulsing() const { return m_glow.state() == QAbstractAnimation::Running; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void updatePulse();

    ClipHealth m_health = ClipHealth::unknown;
    QString m_label;
    QVariantAnimation m_glow;
    qreal m_glowValue = 0;
};
