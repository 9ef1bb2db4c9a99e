// Feeds arbitrary bytes to the cloud record decoder. It must accept or refuse with a reason,
// never crash, and whatever it accepts must come back unchanged through encoding and decoding.
//   cmake -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DTIDEMARK_CORE_ONLY=ON -DTIDEMARK_FUZZ=ON
//   cmake --build build-fuzz --target fuzz_cloud_record_json
//   build-fuzz/tests/fuzz_cloud_record_json -max_total_time=60
#include "cloud/CloudRecordMapping.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidemark;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    JsonDecodeError error;
    const auto record = decodeCloudRecordJson(text, "eventZone", &error);
    if (!record) {
        if (error.message.empty()) {
            __builtin_trap();
        }
        return 0;
    }
    const auto again = decodeCloudRecordJson(encodeCloudRecordJson(*record), "eventZone");
    if (!again || *again != *record) {
        __builtin_trap();
    }
    return 0;
}
