// An event card as a picture: the card item (GenImageForEventFromView.qml) is rendered off
// screen at five times its size into an image with an alpha channel, kept as a PNG file in the
// cache, and handed on: saved where the user picks, copied to the clipboard, or opened with
// another application through the desktop portal (xdg-open without one).
#pragma once

#include <QImage>
#include <QObject>
#include <QQuickItem>
#include <QSize>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace tidemark {

class ShareEventImage : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// True while the picture is being made.
    Q_PROPERTY(bool loadingViewToggleForShareButton READ loadingViewToggleForShareButton NOTIFY
                   loadingChanged)
    /// The picture's PNG file in the cache (a query tells pictures apart); empty until one is
    /// made.
    Q_PROPERTY(QUrl imageUrl READ imageUrl NOTIFY imageChanged)
    Q_PROPERTY(QSize imageSize READ imageSize NOTIFY imageChanged)
    /// ~/Pictures (the save dialog's first folder).
    Q_PROPERTY(QUrl picturesFolder READ picturesFolder CONSTANT)
public:
    /// Pixels per point of the picture.
    static constexpr qreal kScale = 5.0;
    /// The card's frame is never narrower than this, in points.
    static constexpr qreal kMinimumWidth = 500.0;

    using QObject::QObject;

    bool loadingViewToggleForShareButton() const { return loading_; }
    QUrl imageUrl() const;
    QSize imageSize() const { return image_.size(); }
    QUrl picturesFolder() const;
    const QImage& image() const { return image_; }

    /// Renders `card` (which must be in a window) at kScale; `imageChanged` follows, or `failed`.
    Q_INVOKABLE void make(QQuickItem* card);
    /// Writes the picture as PNG to `file`; false if there is none or the write failed.
    Q_INVOKABLE bool saveTo(const QUrl& file) const;
    Q_INVOKABLE void copyToClipboard() const;
    /// Asks the desktop portal to open the file with an application of the user's choice, else
    /// (no portal, or it refused) runs xdg-open on it. False if neither could be asked.
    Q_INVOKABLE bool openWithOtherApp();

    /// Renders `item` at `scale` pixels per point into an image with alpha, then calls `done`
    /// (with a null image if the window couldn't render it). The item has a `matte` colour
    /// property drawn beneath everything (GenImageForEventFromView): it is rendered on black
    /// and on white, and the alpha comes from the difference.
    static void render(QQuickItem* item, qreal scale, std::function<void(QImage)> done);

signals:
    void loadingChanged();
    void imageChanged();
    void failed();

private:
    void setLoading(bool loading);

    QImage image_;
    QString file_;
    bool loading_ = false;
    int generation_ = 0;
};

} // namespace tidemark
