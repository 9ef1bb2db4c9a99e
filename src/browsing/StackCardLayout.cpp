#include "browsing/StackCardLayout.h"

#include <algorithm>

namespace tidemark {

namespace {

double progressOf(double minY, double itemHeight) {
    return itemHeight > 0 ? minY / itemHeight : 0;
}

} // namespace

double stackCardOffset(double minY, double itemHeight, int stackedDisplayCount) {
    const double maxOffset = stackedDisplayCount * kStackOffsetPerCard;
    const double offset =
        std::clamp(progressOf(minY, itemHeight) * kStackOffsetPerCard, 0.0, maxOffset);
    return minY < 0 ? 0 : offset - minY;
}

double stackCardScale(double minY, double itemHeight, int stackedDisplayCount) {
    const double maxScale = stackedDisplayCount * kStackScalePerCard;
    return 1 - std::clamp(progressOf(minY, itemHeight) * kStackScalePerCard, 0.0, maxScale);
}

double stackCardOpacity(double minY, double itemHeight, int opacityDisplayCount,
                        bool disablesOpacityEffect) {
    if (disablesOpacityEffect) {
        return 1;
    }
    const double progress = progressOf(minY, itemHeight);
    const double step = 1.0 / (opacityDisplayCount + 1);
    const double maxOpacity = step * (opacityDisplayCount + 1);
    const double fade = std::clamp(progress * step, 0.0, maxOpacity);
    return progress < opacityDisplayCount + 1 ? 1 - fade : 0;
}

} // namespace tidemark
