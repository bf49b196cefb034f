#include "segmentbar.h"

#include "apptheme.h"

#include <QPainter>
#include <QPainterPath>

namespace {
constexpr qreal kGap = 3;
constexpr double kEmptySum = 0.0001;
} // namespace

SegmentBar::SegmentBar(int widthPx, int heightPx, QWidget *parent) : QWidget(parent)
{
    setFixedSize(widthPx, heightPx);
}

void SegmentBar::setSegments(QList<Segment> segments)
{
    m_segments = std::move(segments);
    update();
}

void SegmentBar::paint(QPainter *painter, const QRectF &track, const QList<Segment> &segments)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    const qreal radius = track.height() / 2;
    painter->setBrush(AppTheme::white(0.06));
    painter->drawRoundedRect(track, radius, radius);
    double sum = 0;
    int shown = 0;
    for (const Segment &s : segments) {
        sum += std::max(0.0, s.value);
        shown += s.value > 0 ? 1 : 0;
    }
    if (sum >= kEmptySum) {
        QPainterPath clip;
        clip.addRoundedRect(track, radius, radius);
        painter->setClipPath(clip);
        // Gaps only between segments that are drawn.
        const qreal room = track.width() - kGap * std::max(0, shown - 1);
        qreal x = track.left();
        for (const Segment &s : segments) {
            if (s.value <= 0)
                continue;
            const qreal w = room * s.value / sum;
            painter->setBrush(s.color);
            painter->drawRoundedRect(QRectF(x, track.top(), w, track.height()), radius, radius);
            x += w + kGap;
        }
    }
    painter->restore();
}

void SegmentBar::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    paint(&p, QRectF(rect()), m_segments);
}
