#pragma once

#include "model/mediaclip.h"
#include "uicontext.h"

#include <QVariantAnimation>
#include <QWidget>

class GlassCard;
class KitButton;
class Pill;
class SegmentBar;
class StatusBadge;

// A text whose changed digits roll: the old digit slides up and out while the new one comes
// up from below (the header's clip count).
class RollingText final : public QWidget
{
    Q_OBJECT
public:
    explicit RollingText(QWidget *parent = nullptr);
    void setText(const QString &text);
    QString text() const { return m_text; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QString m_previous;
    qreal m_progress = 1.0;
    QVariantAnimation m_roll;
};

// The pack's summary card: kicker, "%d clips" with the summary badge, the ok/warn/fail bar,
// warn and fail pills shown only above zero, and a clear button.
class PackHeader final : public QWidget
{
    Q_OBJECT
public:
    explicit PackHeader(const UiContext &context, QWidget *parent = nullptr);

    // Fail if any clip fails, else warn if any warns, else ok if any is ok; else warn (a pack
    // whose clips are all still being inspected is not yet ok).
    static ClipHealth summaryHealth(const QList<MediaClip> &clips);

    RollingText *title() const { return m_title; }
    StatusBadge *badge() const { return m_badge; }
    SegmentBar *segmentBar() const { return m_bar; }
    Pill *warnPill() const { return m_warn; }
    Pill *failPill() const { return m_fail; }
    KitButton *clearButton() const { return m_clear; }

private:
    void refresh();

    UiContext m_context;
    RollingText *m_title;
    StatusBadge *m_badge;
    SegmentBar *m_bar;
    Pill *m_warn;
    Pill *m_fail;
    KitButton *m_clear;
};
