// The ring of a calendar day: one arc per event colour, in order, together a full circle.
// Arc i runs from i/n*360 to (i+1)/n*360 degrees, zero pointing right and the angles growing
// downwards (the screen's y axis points down), which is how the phone platform draws an arc with
// its clockwise flag false in its flipped coordinates.
#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QQuickPaintedItem>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
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
    /// The colour names of the arcs, in order: one per event of the day, thousands on a busy
    /// day. They are looked up here rather than in QML, where that costs a script call each.
    Q_PROPERTY(QStringList colorNames READ colorNames WRITE setColorNames NOTIFY colorsChanged)
    /// The scheme's named colours (name to colour); a name missing from it takes "default".
    Q_PROPERTY(QVariantMap namedColors READ namedColors WRITE setNamedColors NOTIFY colorsChanged)
    /// The arcs' colours, in order.
    Q_PROPERTY(QVariantList colors READ colors NOTIFY colorsChanged)
    Q_PROPERTY(qreal lineWidth READ lineWidth WRITE setLineWidth NOTIFY lineWidthChanged)
    /// How many arcs the ring draws.
    Q_PROPERTY(int arcCount READ arcCount NOTIFY colorsChanged)
public:
    explicit DayRing(QQuickItem* parent = nullptr);

    QStringList colorNames() const { return colorNames_; }
    void setColorNames(const QStringList& names);
    QVariantMap namedColors() const { return namedColors_; }
    void setNamedColors(const QVariantMap& colors);
    QVariantList colors() const;
    qreal lineWidth() const { return lineWidth_; }
    void setLineWidth(qreal width);
    int arcCount() const { return static_cast<int>(colorNames_.size()); }

    /// The start and end angle of arc `index`, for tests and tools.
    Q_INVOKABLE QVariantList arcAngles(int index) const;

    void paint(QPainter* painter) override;

signals:
    void colorsChanged();
    void lineWidthChanged();

private:
    QColor colorOf(const QString& name) const;

    QStringList colorNames_;
    QVariantMap namedColors_;
    QHash<QString, QColor> colorOfName_;
    qreal lineWidth_ = 2.0;
};

} // namespace tidemark
