// libFuzzer target for the reader of WebDAV multistatus replies, which takes whatever a server
// sends: it must answer with resources or an error, never crash, hang or read out of bounds.
#include "platform/linux/WebDavMultistatus.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto xml =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto result = tidemark::readMultistatus(xml);
    if (!result.error.isEmpty() && !result.resources.empty()) {
        __builtin_trap(); // an error never comes with resources
    }
    for (const auto& resource : result.resources) {
        if (resource.name.size() > resource.path.size() + 1) {
            __builtin_trap(); // the name is a decoded segment of the path, never longer
        }
    }
    return 0;
}
