// The ring of a calendar day: one arc per colour, the colours in order, together a full circle.
// Arc i runs from i/n*360 to (i+1)/n*360 degrees, zero pointing right and the angles growing
// downwards (the screen's y axis points down), which is how the phone platform draws an arc with
// its clockwise flag false in its flipped coordinates.
#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

/// One arc of the ring, in degrees.
struct RingSegment {
    double startAngle = 0;
    double endAngle = 0;
    bool operator==(const RingSegment&) const = default;
};

/// The arcs for `count` colours.
QList<RingSegment> ringSegments(int count);

class DayRing : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The colours of the arcs, in order (colour values or names QColor understands).
    Q_PROPERTY(QVariantList colors READ colors WRITE setColors NOTIFY colorsChanged)
    Q_PROPERTY(qreal lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    /// How many arcs the ring draws.
    Q_PROPERTY(int arcCount READ arcCount NOTIFY colorsChanged)
public:
    explicit DayRing(QQuickItem* parent = nullptr);

    QVariantList colors() const { return colors_; }
    void setColors(const QVariantList& colors);
    qreal lineWidth() const { return lineWidth_; }
    void setLineWidth(qreal width);
    int arcCount() const { return static_cast<int>(colors_.size()); }

    /// The start and end angle of arc `index`, for tests and tools.
    Q_INVOKABLE QVariantList arcAngles(int index) const;

    void paint(QPainter* painter) override;

signals:
    void colorsChanged();
    void lineWidthChanged();

private:
    QVariantList colors_;
    qreal lineWidth_ = 2.0;
};

} // namespace tidemark
