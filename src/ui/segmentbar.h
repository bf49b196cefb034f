#pragma once

#include <QColor>
#include <QList>
#include <QWidget>

// A capsule track split into coloured shares of a sum (the pack's ok, warn and fail counts).
class SegmentBar final : public QWidget
{
    Q_OBJECT
public:
    struct Segment {
        double value = 0;
        QColor color;
    };

    explicit SegmentBar(int widthPx, int heightPx, QWidget *parent = nullptr);
    void setSegments(QList<Segment> segments);
    const QList<Segment> &segments() const { return m_segments; }

    // Shared with painted places that have no widget of their own.
    static void paint(QPainter *painter, const QRectF &track, const QList<Segment> &segments);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<Segment> m_segments;
};
