#pragma once

#include <QVariantAnimation>
#include <QWidget>

class QLabel;
class QProgressBar;
class ShimmerBorder;
class SpinnerRing;

// Covers the detail area while media are being added or a pack is exported: a dimmed backdrop
// and a small card with the spinner, the status text and, for an export, a progress bar. The
// card breathes gently and arrives with a fade and a scale from 0.96.
class ScanningOverlay final : public QWidget
{
    Q_OBJECT
public:
    explicit ScanningOverlay(QWidget *parent = nullptr);

    void setMessage(const QString &message);
    QString message() const;
    // A value in [0, 1] shows the bar; nothing hides it.
    void setProgress(std::optional<double> progress);
    bool showsProgress() const;
    double progressValue() const;
    void setFrozen(bool frozen);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QRectF cardRect() const;

    QWidget *m_card;
    SpinnerRing *m_spinner;
    QLabel *m_message;
    QProgressBar *m_progress;
    ShimmerBorder *m_shimmer;
    QVariantAnimation m_pulse;
    qreal m_scale = 1.0;
    bool m_frozen = false;
    QPixmap m_shadow;
};
