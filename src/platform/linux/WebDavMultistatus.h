// Reading a WebDAV multistatus reply (the answer to PROPFIND): one entry per resource with the few
// properties the cloud service asks for. Untrusted input: whatever the bytes, the reader returns
// either the entries or the reason it can't, and never takes a document type declaration.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace tidemark {

struct DavResource {
    /// The resource's path as the server named it, percent-decoded ("/dav/a b/" for
    /// "http://host/dav/a%20b/").
    QString path;
    /// The last segment of the path, percent-decoded on its own, so that an encoded "/" in a
    /// name stays part of the name.
    QString name;
    /// The response's own status (a member that is gone, say), 0 when it gave none.
    int status = 0;
    bool collection = false;
    /// DAV:getetag as sent, quotes and any weak marker included; empty when not given.
    QString etag;
    /// The href of DAV:current-user-principal, percent-decoded, when the server gave one.
    std::optional<QString> currentUserPrincipal;
};

struct MultistatusResult {
    std::vector<DavResource> resources;
    /// Why the reply can't be read; empty when it could.
    QString error;
};

/// The resources of a DAV:multistatus document. Properties count only from a propstat whose
/// status is 2xx (servers list the properties they don't have under 404).
MultistatusResult readMultistatus(const QByteArray& xml);

} // namespace tidemark
