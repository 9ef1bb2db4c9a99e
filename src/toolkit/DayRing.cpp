#include "toolkit/DayRing.h"

#include <QPainter>
#include <QPen>
#include <algorithm>

namespace tidemark {

QList<RingSegment> ringSegments(int count) {
    QList<RingSegment> segments;
    for (int i = 0; i < count; ++i) {
        segments.append(
            {static_cast<double>(i) / count * 360.0, static_cast<double>(i + 1) / count * 360.0});
    }
    return segments;
}

DayRing::DayRing(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void DayRing::setColors(const QVariantList& colors) {
    if (colors == colors_) {
        return;
    }
    colors_ = colors;
    emit colorsChanged();
    update();
}

void DayRing::setLineWidth(qreal width) {
    if (qFuzzyCompare(width, lineWidth_)) {
        return;
    }
    lineWidth_ = width;
    emit lineWidthChanged();
    update();
}

QVariantList DayRing::arcAngles(int index) const {
    const auto segments = ringSegments(arcCount());
    if (index < 0 || index >= segments.size()) {
        return {};
    }
    return {segments[index].startAngle, segments[index].endAngle};
}

void DayRing::paint(QPainter* painter) {
    const auto segments = ringSegments(arcCount());
    if (segments.isEmpty()) {
        return;
    }
    // Centre in the middle; radius = half the smaller side minus half the line.
    const qreal radius = std::min(width(), height()) / 2.0 - lineWidth_ / 2.0;
    if (radius <= 0) {
        return;
    }
    const QRectF circle(width() / 2.0 - radius, height() / 2.0 - radius, 2 * radius, 2 * radius);
    painter->setRenderHint(QPainter::Antialiasing);
    // Neighbouring segments of one colour are drawn as one arc: a day with thousands of events
    // has a few colours, not thousands of strokes.
    for (int i = 0; i < segments.size();) {
        const QColor color = colors_[i].value<QColor>();
        int end = i + 1;
        while (end < segments.size() && colors_[end].value<QColor>() == color) {
            ++end;
        }
        QPen pen(color, lineWidth_);
        pen.setCapStyle(Qt::FlatCap);
        painter->setPen(pen);
        // QPainter counts angles counter-clockwise on screen in 1/16 degree: negate them so the
        // angles grow downwards from the right.
        const int start = qRound(-segments[i].startAngle * 16.0);
        const int span = qRound(-(segments[end - 1].endAngle - segments[i].startAngle) * 16.0);
        painter->drawArc(circle, start, span);
        i = end;
    }
}

} // namespace tidemark
