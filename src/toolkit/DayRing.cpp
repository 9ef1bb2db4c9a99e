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

void DayRing::setColorNames(const QStringList& names) {
    if (names == colorNames_) {
        return;
    }
    colorNames_ = names;
    emit colorsChanged();
    update();
}

void DayRing::setNamedColors(const QVariantMap& colors) {
    if (colors == namedColors_) {
        return;
    }
    namedColors_ = colors;
    colorOfName_.clear();
    for (auto it = colors.cbegin(); it != colors.cend(); ++it) {
        colorOfName_.insert(it.key(), it.value().value<QColor>());
    }
    emit colorsChanged();
    update();
}

QColor DayRing::colorOf(const QString& name) const {
    const auto it = colorOfName_.constFind(name);
    return it != colorOfName_.cend() ? *it : colorOfName_.value(QStringLiteral("default"));
}

QVariantList DayRing::colors() const {
    QVariantList colors;
    colors.reserve(colorNames_.size());
    for (const auto& name : colorNames_) {
        colors.append(colorOf(name));
    }
    return colors;
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
        const QColor color = colorOf(colorNames_[i]);
        int end = i + 1;
        while (end < segments.size() &&
               (colorNames_[end] == colorNames_[end - 1] || colorOf(colorNames_[end]) == color)) {
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
