#include "engine/CanonicalDayList.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace tidemark {

namespace {

/// A binary property list read in place. Objects must follow one another in the order of the
/// offset table, each filling the bytes up to the next exactly; every read is bounds-checked and
/// any surprise makes the whole reading fail.
class Plist {
public:
    explicit Plist(const Bytes& bytes) : bytes_(bytes) {}

    bool open() {
        const std::size_t size = bytes_.size();
        static constexpr std::string_view kMagic = "bplist00";
        if (size < 8 + 32 || !std::equal(kMagic.begin(), kMagic.end(), bytes_.begin())) {
            return false;
        }
        const std::size_t trailer = size - 32;
        for (std::size_t i = 0; i < 6; ++i) {
            if (bytes_[trailer + i] != 0) {
                return false;
            }
        }
        offsetSize_ = bytes_[trailer + 6];
        if ((offsetSize_ != 1 && offsetSize_ != 2) || bytes_[trailer + 7] != 1) {
            return false; // object references of one byte only
        }
        std::uint64_t top = 0, table = 0;
        if (!number(trailer + 8, 8, count_) || !number(trailer + 16, 8, top) ||
            !number(trailer + 24, 8, table) || count_ == 0 || count_ > 255 || top >= count_ ||
            table != trailer - count_ * offsetSize_) {
            return false;
        }
        objectsEnd_ = static_cast<std::size_t>(table);
        std::uint64_t previous = 7;
        offsets_.resize(static_cast<std::size_t>(count_));
        for (std::size_t i = 0; i < offsets_.size(); ++i) {
            std::uint64_t offset = 0;
            // Objects one after another, none shared, all before the table.
            if (!number(objectsEnd_ + i * offsetSize_, offsetSize_, offset) || offset <= previous ||
                offset >= objectsEnd_) {
                return false;
            }
            offsets_[i] = static_cast<std::size_t>(offset);
            previous = offset;
        }
        seen_.assign(offsets_.size(), false);
        top_ = static_cast<std::size_t>(top);
        return true;
    }

    std::size_t top() const { return top_; }
    bool allSeen() const {
        return std::all_of(seen_.begin(), seen_.end(), [](bool s) { return s; });
    }

    bool string(std::size_t object, std::string_view& out) {
        std::size_t at = 0;
        std::uint8_t marker = 0;
        std::uint64_t length = 0;
        if (!head(object, at, marker) || (marker >> 4) != 0x5 || !size(at, marker, length) ||
            length != end_ - at) {
            return false;
        }
        out = std::string_view(reinterpret_cast<const char*>(bytes_.data() + at),
                               static_cast<std::size_t>(length));
        return std::none_of(out.begin(), out.end(), [](char c) { return c == '\0' || (c & 0x80); });
    }

    bool integer(std::size_t object, std::int64_t& out) {
        std::size_t at = 0;
        std::uint8_t marker = 0;
        if (!head(object, at, marker) || (marker >> 4) != 0x1 || (marker & 0xF) > 3) {
            return false;
        }
        const std::size_t width = std::size_t{1} << (marker & 0xF);
        std::uint64_t value = 0;
        if (width != end_ - at || !number(at, width, value)) {
            return false;
        }
        // One, two and four bytes are unsigned; eight bytes are two's complement.
        out = static_cast<std::int64_t>(value);
        return true;
    }

    bool uid(std::size_t object, std::size_t& out) {
        std::size_t at = 0;
        std::uint8_t marker = 0;
        std::uint64_t value = 0;
        if (!head(object, at, marker) || marker != 0x80 || at + 1 != end_ ||
            !number(at, 1, value)) {
            return false;
        }
        out = static_cast<std::size_t>(value);
        return true;
    }

    bool array(std::size_t object, std::vector<std::size_t>& items) {
        std::size_t at = 0;
        std::uint8_t marker = 0;
        std::uint64_t n = 0;
        if (!head(object, at, marker) || (marker >> 4) != 0xA || !size(at, marker, n) ||
            !references(at, n, items)) {
            return false;
        }
        return true;
    }

    /// A dictionary whose keys are exactly `keys` (in any order): their values, in that order.
    bool dictionary(std::size_t object, std::initializer_list<std::string_view> keys,
                    std::vector<std::size_t>& values) {
        std::size_t at = 0;
        std::uint8_t marker = 0;
        std::uint64_t n = 0;
        std::vector<std::size_t> refs;
        if (!head(object, at, marker) || (marker >> 4) != 0xD || !size(at, marker, n) ||
            n != keys.size() || !references(at, 2 * n, refs)) {
            return false;
        }
        values.assign(keys.size(), 0);
        std::vector<bool> found(keys.size(), false);
        for (std::size_t i = 0; i < n; ++i) {
            std::string_view key;
            if (!string(refs[i], key)) {
                return false;
            }
            const auto it = std::find(keys.begin(), keys.end(), key);
            const auto k = static_cast<std::size_t>(it - keys.begin());
            if (it == keys.end() || found[k]) {
                return false;
            }
            found[k] = true;
            values[k] = refs[n + i];
        }
        return true;
    }

private:
    bool number(std::size_t at, std::size_t width, std::uint64_t& out) const {
        if (at > bytes_.size() || width > bytes_.size() - at) {
            return false;
        }
        out = 0;
        for (std::size_t i = 0; i < width; ++i) {
            out = (out << 8) | bytes_[at + i];
        }
        return true;
    }

    /// Where an object's bytes start (after the marker) and end (at the next object).
    bool head(std::size_t object, std::size_t& at, std::uint8_t& marker) {
        if (object >= offsets_.size()) {
            return false;
        }
        seen_[object] = true;
        at = offsets_[object];
        end_ = object + 1 < offsets_.size() ? offsets_[object + 1] : objectsEnd_;
        marker = bytes_[at++];
        return true;
    }

    /// The element count of a string, array or dictionary: in the marker, or in a following
    /// one-byte or two-byte integer.
    bool size(std::size_t& at, std::uint8_t marker, std::uint64_t& n) const {
        if ((marker & 0xF) != 0xF) {
            n = marker & 0xF;
            return true;
        }
        if (at >= end_ || (bytes_[at] != 0x10 && bytes_[at] != 0x11)) {
            return false;
        }
        const std::size_t width = bytes_[at] == 0x10 ? 1 : 2;
        if (at + 1 + width > end_ || !number(at + 1, width, n)) {
            return false;
        }
        at += 1 + width;
        return true;
    }

    bool references(std::size_t at, std::uint64_t n, std::vector<std::size_t>& out) const {
        // The references fill the object to its end.
        if (at > end_ || n != end_ - at) {
            return false;
        }
        out.clear();
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t ref = bytes_[at + i];
            if (ref >= offsets_.size()) {
                return false;
            }
            out.push_back(ref);
        }
        return true;
    }

    const Bytes& bytes_;
    std::size_t offsetSize_ = 0;
    std::uint64_t count_ = 0;
    std::size_t objectsEnd_ = 0;
    std::size_t top_ = 0;
    std::size_t end_ = 0; ///< the end of the object being read
    std::vector<std::size_t> offsets_;
    std::vector<bool> seen_;
};

} // namespace

std::optional<std::vector<std::int64_t>> readCanonicalDayList(const Bytes& archive) {
    Plist plist(archive);
    if (!plist.open()) {
        return std::nullopt;
    }
    std::vector<std::size_t> top;
    std::vector<std::size_t> pointer;
    std::vector<std::size_t> objects;
    std::int64_t version = 0;
    std::string_view text;
    std::size_t root = 0;
    if (!plist.dictionary(plist.top(), {"$version", "$archiver", "$top", "$objects"}, top) ||
        !plist.integer(top[0], version) || version != 100000 || !plist.string(top[1], text) ||
        text != "NSKeyedArchiver" || !plist.dictionary(top[2], {"root"}, pointer) ||
        !plist.uid(pointer[0], root) || !plist.array(top[3], objects) || objects.size() < 3 ||
        !plist.string(objects[0], text) || text != "$null" || root == 0 || root >= objects.size()) {
        return std::nullopt;
    }

    // The root: an array of the archiver's own class, with its elements.
    std::vector<std::size_t> rootParts;
    std::vector<std::size_t> elementUids;
    std::size_t classIndex = 0;
    if (!plist.dictionary(objects[root], {"NS.objects", "$class"}, rootParts) ||
        !plist.array(rootParts[0], elementUids) || !plist.uid(rootParts[1], classIndex) ||
        classIndex == 0 || classIndex == root || classIndex >= objects.size()) {
        return std::nullopt;
    }
    std::vector<std::size_t> classParts;
    std::vector<std::size_t> classes;
    std::string_view className;
    std::string_view base;
    if (!plist.dictionary(objects[classIndex], {"$classname", "$classes"}, classParts) ||
        !plist.string(classParts[0], className) ||
        (className != "NSArray" && className != "NSMutableArray") ||
        !plist.array(classParts[1], classes) || classes.size() != 2 ||
        !plist.string(classes[0], text) || text != className || !plist.string(classes[1], base) ||
        base != "NSObject") {
        return std::nullopt;
    }

    // Every archived object is the null marker, the root, its class, or an element integer.
    std::vector<bool> used(objects.size(), false);
    used[0] = used[root] = used[classIndex] = true;
    std::vector<std::int64_t> values;
    values.reserve(elementUids.size());
    for (const std::size_t uidObject : elementUids) {
        std::size_t index = 0;
        std::int64_t value = 0;
        if (!plist.uid(uidObject, index) || index == 0 || index == root || index == classIndex ||
            index >= objects.size() || !plist.integer(objects[index], value)) {
            return std::nullopt;
        }
        used[index] = true;
        values.push_back(value);
    }
    if (!std::all_of(used.begin(), used.end(), [](bool u) { return u; }) || !plist.allSeen()) {
        return std::nullopt;
    }
    return values;
}

} // namespace tidemark
