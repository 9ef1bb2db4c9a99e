#include "platform/linux/WebDavMultistatus.h"

#include <QUrl>
#include <QXmlStreamReader>

namespace tidemark {

namespace {

const QString kDav = QStringLiteral("DAV:");

bool isDav(const QXmlStreamReader& reader, QLatin1StringView name) {
    return reader.namespaceUri() == kDav && reader.name() == name;
}

/// The code of a status line ("HTTP/1.1 404 Not Found" gives 404); 0 when there is none.
int statusCode(const QString& line) {
    const auto parts = QStringView(line).trimmed().split(u' ', Qt::SkipEmptyParts);
    if (parts.size() < 2) {
        return 0;
    }
    bool ok = false;
    const int code = parts[1].toInt(&ok);
    return ok && code >= 100 && code <= 999 ? code : 0;
}

struct Href {
    QString path, name;
};

/// An href, absolute URL or path, as its decoded path and decoded last segment.
std::optional<Href> readHref(const QString& text) {
    const QUrl url(text.trimmed(), QUrl::TolerantMode);
    if (!url.isValid()) {
        return std::nullopt;
    }
    QString encoded = url.path(QUrl::FullyEncoded);
    while (encoded.endsWith(u'/')) {
        encoded.chop(1);
    }
    const QString lastSegment = encoded.mid(encoded.lastIndexOf(u'/') + 1);
    return Href{url.path(QUrl::FullyDecoded), QUrl::fromPercentEncoding(lastSegment.toUtf8())};
}

struct Properties {
    bool collection = false;
    QString etag;
    std::optional<QString> currentUserPrincipal;
};

void readProperties(QXmlStreamReader& reader, Properties& out) {
    while (reader.readNextStartElement()) {
        if (isDav(reader, QLatin1StringView("resourcetype"))) {
            while (reader.readNextStartElement()) {
                if (isDav(reader, QLatin1StringView("collection"))) {
                    out.collection = true;
                }
                reader.skipCurrentElement();
            }
        } else if (isDav(reader, QLatin1StringView("getetag"))) {
            out.etag = reader.readElementText().trimmed();
        } else if (isDav(reader, QLatin1StringView("current-user-principal"))) {
            while (reader.readNextStartElement()) {
                if (isDav(reader, QLatin1StringView("href"))) {
                    if (auto href = readHref(reader.readElementText())) {
                        out.currentUserPrincipal = href->path;
                    }
                } else {
                    reader.skipCurrentElement(); // DAV:unauthenticated
                }
            }
        } else {
            reader.skipCurrentElement();
        }
    }
}

void readPropstat(QXmlStreamReader& reader, DavResource& resource) {
    Properties properties;
    int status = 0;
    while (reader.readNextStartElement()) {
        if (isDav(reader, QLatin1StringView("prop"))) {
            readProperties(reader, properties);
        } else if (isDav(reader, QLatin1StringView("status"))) {
            status = statusCode(reader.readElementText());
        } else {
            reader.skipCurrentElement();
        }
    }
    if (status >= 200 && status < 300) {
        resource.collection = resource.collection || properties.collection;
        if (!properties.etag.isEmpty()) {
            resource.etag = properties.etag;
        }
        if (properties.currentUserPrincipal) {
            resource.currentUserPrincipal = properties.currentUserPrincipal;
        }
    }
}

/// One DAV:response; an error on `reader` when it has no usable href.
DavResource readResponse(QXmlStreamReader& reader) {
    DavResource resource;
    bool haveHref = false;
    while (reader.readNextStartElement()) {
        if (isDav(reader, QLatin1StringView("href"))) {
            const QString text = reader.readElementText();
            if (haveHref) {
                continue; // a status response may list several; the first names it
            }
            const auto href = readHref(text);
            if (!href) {
                reader.raiseError(QStringLiteral("unreadable href \"%1\"").arg(text.left(200)));
                return resource;
            }
            resource.path = href->path;
            resource.name = href->name;
            haveHref = true;
        } else if (isDav(reader, QLatin1StringView("status"))) {
            resource.status = statusCode(reader.readElementText());
        } else if (isDav(reader, QLatin1StringView("propstat"))) {
            readPropstat(reader, resource);
        } else {
            reader.skipCurrentElement();
        }
    }
    if (!haveHref && !reader.hasError()) {
        reader.raiseError(QStringLiteral("a response without href"));
    }
    return resource;
}

} // namespace

MultistatusResult readMultistatus(const QByteArray& xml) {
    MultistatusResult result;
    QXmlStreamReader reader(xml);
    bool sawRoot = false;
    while (!reader.atEnd() && !reader.hasError()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::DTD) {
            reader.raiseError(QStringLiteral("document type declarations are not accepted"));
        } else if (token == QXmlStreamReader::StartElement) {
            if (sawRoot || !isDav(reader, QLatin1StringView("multistatus"))) {
                reader.raiseError(QStringLiteral("the root element is not DAV:multistatus"));
                break;
            }
            sawRoot = true;
            while (reader.readNextStartElement()) {
                if (isDav(reader, QLatin1StringView("response"))) {
                    auto resource = readResponse(reader);
                    if (reader.hasError()) {
                        break;
                    }
                    result.resources.push_back(std::move(resource));
                } else {
                    reader.skipCurrentElement();
                }
            }
        }
    }
    if (!reader.hasError() && !sawRoot) {
        reader.raiseError(QStringLiteral("the reply is empty"));
    }
    if (reader.hasError()) {
        result.resources.clear();
        result.error = QStringLiteral("The server's multistatus reply can't be read: %1 (line %2)")
                           .arg(reader.errorString())
                           .arg(reader.lineNumber());
    }
    return result;
}

} // namespace tidemark
