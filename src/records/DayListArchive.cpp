// Keyed archives of integer lists, read and written with libplist.
//
// Only binary property lists are read (the platform's archiver writes nothing else), up to 1 MiB.
// Reading happens in three steps:
//   1. A structural check of the binary property list, done here before libplist sees the bytes.
//      The libplist parser recurses once per nesting level and expands every shared reference into
//      a copy, so a small hostile blob could exhaust the stack or the memory. The check walks the
//      object graph without recursion and bounds its depth and its expanded size.
//   2. The keyed archive: "$objects" and "$top" must be there, and every UID reachable from the
//      root must point into "$objects" without forming a cycle.
//   3. The root object: an NSArray (or a subclass) whose elements are all integers gives the list;
//      any other root gives the empty list.
// Arrays are only ever walked with libplist's iterator: libplist finds the element at an index by
// stepping through the array from its front, so indexed walks would make reading quadratic in the
// list's length. "$objects", which UIDs index into, is copied once into a vector.
#include "records/DayListArchive.h"

#include "base/Fatal.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <plist/plist.h>
#include <unordered_set>
#include <utility>

namespace tidemark {

namespace {

constexpr std::string_view kNotInFormat =
    "The data couldn't be read because it isn't in the correct format.";

// Far above anything a keyed archive of a list needs (its deepest path has five levels).
constexpr std::size_t kMaxNesting = 64;
constexpr std::uint64_t kMaxExpandedNodes = 100'000;
constexpr std::size_t kMaxArchiveSize = 1u << 20;

std::string formatError(std::string_view detail) {
    std::string text(kNotInFormat);
    text += ' ';
    text += detail;
    return text;
}

std::uint64_t readBigEndian(const std::uint8_t* p, std::size_t n) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < n; ++i) {
        value = (value << 8) | p[i];
    }
    return value;
}

/// What the structural check learns besides "fine": the low halves of 16-byte integers that do
/// not fit into 64 signed bits. libplist keeps only the low 64 bits of such a number, so without
/// this list it would come back as a different, negative integer.
struct ShapeInfo {
    std::unordered_set<std::uint64_t> oversizedIntegers;
};

class BinaryPlistShape {
public:
    BinaryPlistShape(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    std::optional<std::string> check(ShapeInfo& info) {
        constexpr std::size_t kHeader = 8, kTrailer = 32;
        if (size_ < kHeader + kTrailer + 2 || std::memcmp(data_, "bplist00", kHeader) != 0) {
            return std::string(kNotInFormat);
        }
        if (size_ > kMaxArchiveSize) {
            return formatError("The archive is too large.");
        }
        const std::uint8_t* trailer = data_ + size_ - kTrailer;
        offsetSize_ = trailer[6];
        refSize_ = trailer[7];
        objectCount_ = readBigEndian(trailer + 8, 8);
        const std::uint64_t root = readBigEndian(trailer + 16, 8);
        tableOffset_ = readBigEndian(trailer + 24, 8);
        const std::uint64_t tableEnd = size_ - kTrailer;
        if (offsetSize_ < 1 || offsetSize_ > 8 || refSize_ < 1 || refSize_ > 8 ||
            objectCount_ == 0 || root >= objectCount_ || tableOffset_ < kHeader ||
            tableOffset_ >= tableEnd || objectCount_ > (tableEnd - tableOffset_) / offsetSize_) {
            return formatError("The property list's trailer is damaged.");
        }
        return walk(root, info);
    }

private:
    enum class Mark : std::uint8_t { unseen, open, done };
    struct Frame {
        std::uint64_t index;
        std::uint64_t refs; // first reference byte
        std::uint64_t refCount;
        std::uint64_t next = 0;
        std::uint64_t expanded = 1;
    };

    std::optional<std::uint64_t> offsetOf(std::uint64_t index) const {
        const std::uint64_t offset =
            readBigEndian(data_ + tableOffset_ + index * offsetSize_, offsetSize_);
        if (offset < 8 || offset >= tableOffset_) {
            return std::nullopt;
        }
        return offset;
    }

    /// Checks that the object at `index` lies within the object area. For containers it gives the
    /// position and number of its references; for leaves a count of zero.
    std::optional<std::string> describe(std::uint64_t index, Frame& frame, ShapeInfo& info) const {
        const auto offset = offsetOf(index);
        if (!offset) {
            return formatError("An object offset points outside the property list.");
        }
        const std::uint64_t end = tableOffset_;
        std::uint64_t pos = *offset;
        const std::uint8_t marker = data_[pos++];
        const unsigned kind = marker >> 4, low = marker & 0x0F;
        const auto fits = [&](std::uint64_t length) { return length <= end - pos; };
        // Made only when needed: this runs for every object of every archive read.
        const auto damaged = [] {
            return formatError("An object runs past the end of the property list.");
        };
        frame = Frame{index, 0, 0};

        // The length of data, strings and containers: the low nibble, or an integer after it.
        std::uint64_t length = low;
        if (low == 0x0F && (kind == 0x4 || kind == 0x5 || kind == 0x6 || kind == 0xA ||
                            kind == 0xC || kind == 0xD)) {
            if (!fits(1) || (data_[pos] & 0xF0) != 0x10 || (data_[pos] & 0x0F) > 3) {
                return damaged();
            }
            const std::size_t n = std::size_t{1} << (data_[pos] & 0x0F);
            ++pos;
            if (!fits(n)) {
                return damaged();
            }
            length = readBigEndian(data_ + pos, n);
            pos += n;
        }
        switch (kind) {
        case 0x0: // null, booleans, fill
            return std::nullopt;
        case 0x1: { // integers of 1, 2, 4, 8 or 16 bytes
            const std::uint64_t n = std::uint64_t{1} << (low & 0x07);
            if (low > 4 || !fits(n)) {
                return damaged();
            }
            if (n == 16) {
                const std::uint64_t high = readBigEndian(data_ + pos, 8);
                const std::uint64_t lowHalf = readBigEndian(data_ + pos + 8, 8);
                const bool negative = lowHalf >> 63;
                if (high != (negative ? ~std::uint64_t{0} : 0)) {
                    info.oversizedIntegers.insert(lowHalf);
                }
            }
            return std::nullopt;
        }
        case 0x2: // reals of 4 or 8 bytes
        case 0x3: // dates
            return fits(std::uint64_t{1} << (low & 0x07)) ? std::nullopt
                                                          : std::optional<std::string>(damaged());
        case 0x4: // data
        case 0x5: // ASCII string
            return fits(length) ? std::nullopt : std::optional<std::string>(damaged());
        case 0x6: // UTF-16 string
            if (length > (end - pos) / 2) {
                return damaged();
            }
            // libplist asserts that its strings hold no NUL, so one is refused here.
            for (std::uint64_t i = 0; i < length; ++i) {
                if (data_[pos + 2 * i] == 0 && data_[pos + 2 * i + 1] == 0) {
                    return formatError("The property list holds a string with a NUL character.");
                }
            }
            return std::nullopt;
        case 0x8: // UID
            return fits(low + 1u) ? std::nullopt : std::optional<std::string>(damaged());
        case 0xA:   // array
        case 0xC:   // set
        case 0xD: { // dictionary: keys, then values
            const std::uint64_t perEntry = kind == 0xD ? 2 : 1;
            if (length > (end - pos) / refSize_ / perEntry) {
                return damaged();
            }
            frame.refs = pos;
            frame.refCount = length * perEntry;
            return std::nullopt;
        }
        default:
            return formatError("The property list holds an object of unknown type.");
        }
    }

    std::optional<std::string> walk(std::uint64_t root, ShapeInfo& info) {
        std::vector<Mark> marks(objectCount_, Mark::unseen);
        std::vector<std::uint64_t> expanded(objectCount_, 0);
        std::vector<Frame> stack;
        Frame first{};
        if (auto error = describe(root, first, info)) {
            return error;
        }
        marks[root] = Mark::open;
        stack.push_back(first);
        while (!stack.empty()) {
            Frame& top = stack.back();
            if (top.next == top.refCount) {
                const Frame done = top;
                stack.pop_back();
                marks[done.index] = Mark::done;
                expanded[done.index] = done.expanded;
                if (!stack.empty()) {
                    stack.back().expanded += done.expanded;
                    if (stack.back().expanded > kMaxExpandedNodes) {
                        return formatError("The property list is too large.");
                    }
                }
                continue;
            }
            const std::uint64_t ref =
                readBigEndian(data_ + top.refs + top.next * refSize_, refSize_);
            ++top.next;
            if (ref >= objectCount_) {
                return formatError("An object reference is out of range.");
            }
            if (marks[ref] == Mark::open) {
                return formatError("The property list refers to itself.");
            }
            if (marks[ref] == Mark::done) {
                top.expanded += expanded[ref];
                if (top.expanded > kMaxExpandedNodes) {
                    return formatError("The property list is too large.");
                }
                continue;
            }
            if (stack.size() >= kMaxNesting) {
                return formatError("The property list is nested too deeply.");
            }
            Frame child{};
            if (auto error = describe(ref, child, info)) {
                return error;
            }
            marks[ref] = Mark::open;
            stack.push_back(child); // `top` is not used after this point
        }
        return std::nullopt;
    }

    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t offsetSize_ = 0, refSize_ = 0;
    std::uint64_t objectCount_ = 0, tableOffset_ = 0;
};

struct PlistDeleter {
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

bool isType(plist_t node, plist_type type) {
    return node != nullptr && plist_get_node_type(node) == type;
}

/// The elements of an array node, in order, found in one pass.
std::vector<plist_t> itemsOf(plist_t array) {
    std::vector<plist_t> items;
    items.reserve(plist_array_get_size(array));
    plist_array_iter it = nullptr;
    plist_array_new_iter(array, &it);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(array, it, &item);
        if (item == nullptr) {
            break;
        }
        items.push_back(item);
    }
    std::free(it);
    return items;
}

std::optional<std::string> stringOf(plist_t node) {
    if (!isType(node, PLIST_STRING)) {
        return std::nullopt;
    }
    char* raw = nullptr;
    plist_get_string_val(node, &raw);
    if (raw == nullptr) {
        return std::nullopt;
    }
    std::string text(raw);
    std::free(raw);
    return text;
}

std::uint64_t uidOf(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uid_val(node, &value);
    return value;
}

/// The keyed archive around a parsed property list: "$objects" and UID resolution.
class KeyedArchive {
public:
    KeyedArchive(plist_t objects, const ShapeInfo& shape)
        : objects_(itemsOf(objects)), shape_(shape) {}

    std::size_t size() const { return objects_.size(); }

    /// The object a UID points at; callers have checked the UID with `checkReachable`.
    plist_t resolve(plist_t uid) const { return objects_[uidOf(uid)]; }

    /// Every UID reachable from `rootUid` must point into "$objects", and following them must
    /// never come back to an object on the current path.
    std::optional<std::string> checkReachable(plist_t rootUid) const {
        const std::uint64_t count = size();
        std::vector<std::uint8_t> marks(count, 0); // 0 unseen, 1 open, 2 done
        struct Frame {
            std::uint64_t index;
            std::vector<std::uint64_t> uids;
            std::size_t next = 0;
        };
        std::vector<Frame> stack;
        const auto enter = [&](std::uint64_t uid) -> std::optional<std::string> {
            if (uid >= count) {
                return formatError("An archived object reference is out of range.");
            }
            if (marks[uid] == 1) {
                return formatError("The archived objects refer to themselves.");
            }
            if (marks[uid] == 0) {
                marks[uid] = 1;
                Frame frame{uid, {}};
                collectUids(objects_[uid], frame.uids);
                stack.push_back(std::move(frame));
            }
            return std::nullopt;
        };
        if (auto error = enter(uidOf(rootUid))) {
            return error;
        }
        while (!stack.empty()) {
            Frame& top = stack.back();
            if (top.next == top.uids.size()) {
                marks[top.index] = 2;
                stack.pop_back();
                continue;
            }
            const std::uint64_t uid = top.uids[top.next++];
            if (auto error = enter(uid)) { // may reallocate the stack: `top` is dead
                return error;
            }
        }
        return std::nullopt;
    }

    /// The integer value of an archived number, if it is one: plist integers, and reals with an
    /// integral value in range. Booleans are not numbers here.
    std::optional<std::int64_t> integerOf(plist_t node) const {
        if (isType(node, PLIST_UINT)) {
            std::uint64_t raw = 0;
            plist_get_uint_val(node, &raw);
            if (shape_.oversizedIntegers.count(raw) != 0) {
                return std::nullopt;
            }
            return static_cast<std::int64_t>(raw); // binary plists store integers signed
        }
        if (isType(node, PLIST_REAL)) {
            double value = 0;
            plist_get_real_val(node, &value);
            constexpr double kLimit = 9223372036854775808.0; // 2^63
            if (std::isfinite(value) && value == std::trunc(value) && value >= -kLimit &&
                value < kLimit) {
                return static_cast<std::int64_t>(value);
            }
        }
        return std::nullopt;
    }

private:
    // Nesting inside one object is bounded by the structural check, so recursion is safe here.
    static void collectUids(plist_t node, std::vector<std::uint64_t>& uids) {
        switch (plist_get_node_type(node)) {
        case PLIST_UID:
            uids.push_back(uidOf(node));
            break;
        case PLIST_ARRAY:
            for (plist_t item : itemsOf(node)) {
                collectUids(item, uids);
            }
            break;
        case PLIST_DICT: {
            plist_dict_iter it = nullptr;
            plist_dict_new_iter(node, &it);
            for (;;) {
                char* key = nullptr;
                plist_t value = nullptr;
                plist_dict_next_item(node, it, &key, &value);
                std::free(key);
                if (value == nullptr) {
                    break;
                }
                collectUids(value, uids);
            }
            std::free(it);
            break;
        }
        default:
            break;
        }
    }

    std::vector<plist_t> objects_;
    const ShapeInfo& shape_;
};

bool isArrayClass(plist_t classDict) {
    const auto name = stringOf(plist_dict_get_item(classDict, "$classname"));
    if (name == "NSArray" || name == "NSMutableArray") {
        return true;
    }
    plist_t classes = plist_dict_get_item(classDict, "$classes");
    if (isType(classes, PLIST_ARRAY)) {
        for (plist_t name : itemsOf(classes)) {
            if (stringOf(name) == "NSArray") {
                return true;
            }
        }
    }
    return false;
}

/// The list held by the archived root object, or an error when the archive is damaged.
DayListReadResult readRoot(const KeyedArchive& archive, plist_t rootUid) {
    DayListReadResult result;
    plist_t root = archive.resolve(rootUid);
    if (!isType(root, PLIST_DICT)) {
        return result; // "$null", a string, a number: no array
    }
    plist_t classUid = plist_dict_get_item(root, "$class");
    if (classUid == nullptr) {
        return result; // a plain dictionary, not an archived object
    }
    if (!isType(classUid, PLIST_UID) || !isType(archive.resolve(classUid), PLIST_DICT) ||
        !stringOf(plist_dict_get_item(archive.resolve(classUid), "$classname"))) {
        result.error = formatError("An archived object has no valid class.");
        return result;
    }
    if (!isArrayClass(archive.resolve(classUid))) {
        return result;
    }
    plist_t items = plist_dict_get_item(root, "NS.objects");
    if (items == nullptr) {
        return result; // an array archived without elements
    }
    if (!isType(items, PLIST_ARRAY)) {
        result.error = formatError("The elements of an archived array are damaged.");
        return result;
    }
    std::vector<std::int64_t> values;
    const std::vector<plist_t> uids = itemsOf(items);
    values.reserve(uids.size());
    for (plist_t uid : uids) {
        if (!isType(uid, PLIST_UID)) {
            result.error = formatError("The elements of an archived array are damaged.");
            return result;
        }
        const auto value = archive.integerOf(archive.resolve(uid));
        if (!value) {
            return result; // an array, but not one of integers
        }
        values.push_back(*value);
    }
    result.values = std::move(values);
    return result;
}

} // namespace

DayListReadResult readDayListArchive(const Bytes& archive) {
    DayListReadResult result;
    if (archive.empty()) {
        return result;
    }
    ShapeInfo shape;
    if (auto error = BinaryPlistShape(archive.data(), archive.size()).check(shape)) {
        result.error = std::move(error);
        return result;
    }
    plist_t parsed = nullptr;
    plist_from_bin(reinterpret_cast<const char*>(archive.data()),
                   static_cast<std::uint32_t>(archive.size()), &parsed);
    const PlistPtr owner(parsed);
    if (parsed == nullptr) {
        result.error = std::string(kNotInFormat);
        return result;
    }
    if (!isType(parsed, PLIST_DICT)) {
        result.error = formatError("The property list is no keyed archive.");
        return result;
    }
    plist_t objects = plist_dict_get_item(parsed, "$objects");
    plist_t top = plist_dict_get_item(parsed, "$top");
    if (!isType(objects, PLIST_ARRAY) || !isType(top, PLIST_DICT)) {
        result.error = formatError("The property list is no keyed archive.");
        return result;
    }
    plist_t rootUid = plist_dict_get_item(top, "root");
    if (rootUid == nullptr) {
        return result; // nothing archived under the root key
    }
    if (!isType(rootUid, PLIST_UID)) {
        result.error = formatError("The archive's root is no object reference.");
        return result;
    }
    const KeyedArchive keyed(objects, shape);
    if (auto error = keyed.checkReachable(rootUid)) {
        result.error = std::move(error);
        return result;
    }
    return readRoot(keyed, rootUid);
}

std::vector<std::int64_t> decodeDayListArchive(const Bytes& archive,
                                               std::string_view failurePrefix) {
    DayListReadResult result = readDayListArchive(archive);
    if (result.error) {
        std::string message(failurePrefix);
        message += *result.error;
        fatalStop(message);
    }
    return std::move(result.values);
}

Bytes encodeDayListArchive(const std::vector<std::int64_t>& values) {
    // Equal numbers are archived once: each distinct value gets the UID of its first appearance,
    // the numbers following the array object in that order and the class coming last.
    std::map<std::int64_t, std::uint64_t> uidOfValue;
    std::vector<std::int64_t> distinct;
    PlistPtr elementUids(plist_new_array());
    for (const std::int64_t value : values) {
        auto [it, inserted] = uidOfValue.emplace(value, 2 + distinct.size());
        if (inserted) {
            distinct.push_back(value);
        }
        plist_array_append_item(elementUids.get(), plist_new_uid(it->second));
    }
    const std::uint64_t classUid = 2 + distinct.size();

    plist_t arrayObject = plist_new_dict();
    plist_dict_set_item(arrayObject, "NS.objects", elementUids.release());
    plist_dict_set_item(arrayObject, "$class", plist_new_uid(classUid));

    plist_t classObject = plist_new_dict();
    plist_t classes = plist_new_array();
    plist_array_append_item(classes, plist_new_string("NSArray"));
    plist_array_append_item(classes, plist_new_string("NSObject"));
    plist_dict_set_item(classObject, "$classname", plist_new_string("NSArray"));
    plist_dict_set_item(classObject, "$classes", classes);

    plist_t objects = plist_new_array();
    plist_array_append_item(objects, plist_new_string("$null"));
    plist_array_append_item(objects, arrayObject);
    for (const std::int64_t value : distinct) {
        // Binary plists keep integers as signed 64-bit values; libplist takes their bit pattern.
        plist_array_append_item(objects, plist_new_uint(static_cast<std::uint64_t>(value)));
    }
    plist_array_append_item(objects, classObject);

    plist_t top = plist_new_dict();
    plist_dict_set_item(top, "root", plist_new_uid(1));

    const PlistPtr archive(plist_new_dict());
    plist_dict_set_item(archive.get(), "$version", plist_new_uint(100000));
    plist_dict_set_item(archive.get(), "$archiver", plist_new_string("NSKeyedArchiver"));
    plist_dict_set_item(archive.get(), "$top", top);
    plist_dict_set_item(archive.get(), "$objects", objects);

    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(archive.get(), &bytes, &length);
    if (bytes == nullptr || length == 0) {
        std::free(bytes);
        fatalStop(std::string(kCantEncodeData) + "The property list writer produced no data.");
    }
    Bytes out(reinterpret_cast<const std::uint8_t*>(bytes),
              reinterpret_cast<const std::uint8_t*>(bytes) + length);
    plist_to_bin_free(bytes);
    return out;
}

} // namespace tidemark
