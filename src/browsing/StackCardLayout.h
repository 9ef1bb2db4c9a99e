// How a card of a stack looks at a scroll position: its vertical offset, its scale (anchored at
// the card's bottom) and its opacity, from `minY`, the card's top within the scroll area, and the
// stack's shape. Pure functions, evaluated for every card on every frame; the QML type
// StackCardLayout hands them to the stack screens.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tidemark {

/// Offset in points per card stacked behind the front one.
inline constexpr double kStackOffsetPerCard = 8.0;
/// Scale lost per card stacked behind the front one.
inline constexpr double kStackScalePerCard = 0.08;

/// 0 for a card above the top (it scrolls away normally); else the card is pinned near the top,
/// min(progress, stackedDisplayCount) * 8 below it: the result is that minus `minY`.
double stackCardOffset(double minY, double itemHeight, int stackedDisplayCount);

/// 1 - clamp(progress * 0.08, 0, stackedDisplayCount * 0.08).
double stackCardScale(double minY, double itemHeight, int stackedDisplayCount);

/// 1 with the effect disabled; else fades by 1 / (opacityDisplayCount + 1) per card and is 0 from
/// progress opacityDisplayCount + 1 on.
double stackCardOpacity(double minY, double itemHeight, int opacityDisplayCount,
                        bool disablesOpacityEffect);

/// The three functions for QML, with the stack's shape as properties.
class StackCardLayout : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int stackedDisplayCount MEMBER stackedDisplayCount NOTIFY shapeChanged)
    Q_PROPERTY(int opacityDisplayCount MEMBER opacityDisplayCount NOTIFY shapeChanged)
    Q_PROPERTY(bool disablesOpacityEffect MEMBER disablesOpacityEffect NOTIFY shapeChanged)
    Q_PROPERTY(double itemHeight MEMBER itemHeight NOTIFY shapeChanged)
public:
    using QObject::QObject;

    int stackedDisplayCount = 2;
    int opacityDisplayCount = 2;
    bool disablesOpacityEffect = false;
    double itemHeight = 200;

    Q_INVOKABLE double offset(double minY) const {
        return stackCardOffset(minY, itemHeight, stackedDisplayCount);
    }
    Q_INVOKABLE double scale(double minY) const {
        return stackCardScale(minY, itemHeight, stackedDisplayCount);
    }
    Q_INVOKABLE double opacity(double minY) const {
        return stackCardOpacity(minY, itemHeight, opacityDisplayCount, disablesOpacityEffect);
    }

signals:
    void shapeChanged();
};

} // namespace tidemark
