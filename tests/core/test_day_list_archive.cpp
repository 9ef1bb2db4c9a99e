// Keyed archives of integer lists: what we write is read back by an independent walk of the
// property list, archives in the shape the phone platform writes are read, non-lists read as the
// empty list, and damaged or hostile bytes are errors without a crash.
#include "records/DayListArchive.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <optional>
#include <plist/plist.h>
#include <set>
#include <string>
#include <vector>

using namespace tidemark;

namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::string_view kFormatError =
    "The data couldn't be read because it isn't in the correct format.";

struct PlistDeleter {
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

Bytes toBinary(plist_t node) {
    char* data = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &data, &length);
    Bytes out(data, data + length);
    plist_to_bin_free(data);
    return out;
}

std::string stringValue(plist_t node) {
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) {
        return "<not a string>";
    }
    char* raw = nullptr;
    plist_get_string_val(node, &raw);
    std::string text(raw);
    std::free(raw);
    return text;
}

std::uint64_t uidValue(plist_t node) {
    EXPECT_TRUE(node != nullptr && plist_get_node_type(node) == PLIST_UID);
    std::uint64_t value = 0;
    if (node != nullptr && plist_get_node_type(node) == PLIST_UID) {
        plist_get_uid_val(node, &value);
    }
    return value;
}

// --- Archives built with libplist, as the platform's archiver lays them out ---------------------

plist_t uid(std::uint64_t value) {
    return plist_new_uid(value);
}
plist_t integer(std::int64_t value) {
    return plist_new_uint(static_cast<std::uint64_t>(value));
}

plist_t array(std::initializer_list<plist_t> items) {
    plist_t node = plist_new_array();
    for (plist_t item : items) {
        plist_array_append_item(node, item);
    }
    return node;
}

plist_t dict(std::initializer_list<std::pair<const char*, plist_t>> items) {
    plist_t node = plist_new_dict();
    for (const auto& [key, value] : items) {
        plist_dict_set_item(node, key, value);
    }
    return node;
}

plist_t classObject(std::initializer_list<const char*> classes) {
    plist_t names = plist_new_array();
    for (const char* name : classes) {
        plist_array_append_item(names, plist_new_string(name));
    }
    return dict({{"$classname", plist_new_string(*classes.begin())}, {"$classes", names}});
}

/// A keyed archive around `objects`, its root at `rootUid`.
Bytes keyedArchive(plist_t objects, plist_t top = nullptr) {
    PlistPtr archive(dict({{"$version", plist_new_uint(100000)},
                           {"$archiver", plist_new_string("NSKeyedArchiver")},
                           {"$top", top ? top : dict({{"root", uid(1)}})},
                           {"$objects", objects}}));
    return toBinary(archive.get());
}

// --- Raw binary property lists, byte by byte -------------------------------------------------

/// Writes a binary property list from hand-made objects, for shapes libplist would not produce.
struct RawPlist {
    std::vector<Bytes> objects;
    std::uint64_t root = 0;
    std::uint8_t refSize = 1;

    std::uint64_t add(Bytes object) {
        objects.push_back(std::move(object));
        return objects.size() - 1;
    }

    static void appendBigEndian(Bytes& out, std::uint64_t value, std::size_t n) {
        for (std::size_t i = n; i-- > 0;) {
            out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }
    static Bytes header(std::uint8_t kind, std::uint64_t length) {
        Bytes out;
        if (length < 15) {
            out.push_back(static_cast<std::uint8_t>(kind << 4 | length));
        } else {
            out.push_back(static_cast<std::uint8_t>(kind << 4 | 0x0F));
            out.push_back(0x13);
            appendBigEndian(out, length, 8);
        }
        return out;
    }
    static Bytes int8(std::int64_t value) {
        Bytes out{0x13};
        appendBigEndian(out, static_cast<std::uint64_t>(value), 8);
        return out;
    }
    static Bytes int1(std::uint8_t value) { return {0x10, value}; }
    static Bytes int16(std::uint64_t high, std::uint64_t low) {
        Bytes out{0x14};
        appendBigEndian(out, high, 8);
        appendBigEndian(out, low, 8);
        return out;
    }
    static Bytes ascii(std::string_view text) {
        Bytes out = header(0x5, text.size());
        out.insert(out.end(), text.begin(), text.end());
        return out;
    }
    static Bytes uidObject(std::uint8_t value) { return {0x80, value}; }
    Bytes container(std::uint8_t kind, std::uint64_t count,
                    const std::vector<std::uint64_t>& refs) {
        Bytes out = header(kind, count);
        for (const auto ref : refs) {
            appendBigEndian(out, ref, refSize);
        }
        return out;
    }
    Bytes arrayOf(const std::vector<std::uint64_t>& refs) {
        return container(0xA, refs.size(), refs);
    }
    Bytes dictOf(const std::vector<std::uint64_t>& keys, const std::vector<std::uint64_t>& values) {
        std::vector<std::uint64_t> refs = keys;
        refs.insert(refs.end(), values.begin(), values.end());
        return container(0xD, keys.size(), refs);
    }

    Bytes build() const {
        Bytes out{'b', 'p', 'l', 'i', 's', 't', '0', '0'};
        std::vector<std::uint64_t> offsets;
        for (const auto& object : objects) {
            offsets.push_back(out.size());
            out.insert(out.end(), object.begin(), object.end());
        }
        const std::uint64_t table = out.size();
        for (const auto offset : offsets) {
            appendBigEndian(out, offset, 8);
        }
        out.insert(out.end(), 6, 0);
        out.push_back(8);
        out.push_back(refSize);
        appendBigEndian(out, objects.size(), 8);
        appendBigEndian(out, root, 8);
        appendBigEndian(out, table, 8);
        return out;
    }
};

/// The bytes of an archive of the given array elements, laid out as the platform writes them:
/// keys and class names shared as one object each, the numbers given as raw objects.
Bytes rawPlatformArchive(const std::vector<Bytes>& numbers, const std::vector<int>& elementOrder,
                         const char* className = "NSMutableArray") {
    RawPlist p;
    const auto kVersion = p.add(RawPlist::ascii("$version"));
    const auto kArchiver = p.add(RawPlist::ascii("$archiver"));
    const auto kTop = p.add(RawPlist::ascii("$top"));
    const auto kObjects = p.add(RawPlist::ascii("$objects"));
    const auto kRoot = p.add(RawPlist::ascii("root"));
    const auto kNSObjects = p.add(RawPlist::ascii("NS.objects"));
    const auto kClass = p.add(RawPlist::ascii("$class"));
    const auto kClassname = p.add(RawPlist::ascii("$classname"));
    const auto kClasses = p.add(RawPlist::ascii("$classes"));
    const auto version = p.add({0x12, 0x00, 0x01, 0x86, 0xA0}); // 100000 in four bytes
    const auto archiver = p.add(RawPlist::ascii("NSKeyedArchiver"));
    const auto rootUid = p.add(RawPlist::uidObject(1));
    const auto top = p.add(p.dictOf({kRoot}, {rootUid}));
    const auto null = p.add(RawPlist::ascii("$null"));
    // $objects: $null, the array, the numbers, the class.
    const std::uint8_t classIndex = static_cast<std::uint8_t>(2 + numbers.size());
    std::vector<std::uint64_t> elementUids;
    for (const int k : elementOrder) {
        elementUids.push_back(p.add(RawPlist::uidObject(static_cast<std::uint8_t>(2 + k))));
    }
    const auto nsObjects = p.add(p.arrayOf(elementUids));
    const auto classUid = p.add(RawPlist::uidObject(classIndex));
    const auto arrayObject = p.add(p.dictOf({kNSObjects, kClass}, {nsObjects, classUid}));
    std::vector<std::uint64_t> objectRefs{null, arrayObject};
    for (const auto& number : numbers) {
        objectRefs.push_back(p.add(number));
    }
    const auto name = p.add(RawPlist::ascii(className));
    const auto nsArray = p.add(RawPlist::ascii("NSArray"));
    const auto nsObject = p.add(RawPlist::ascii("NSObject"));
    const auto classes = std::string_view(className) == "NSArray"
                             ? p.add(p.arrayOf({nsArray, nsObject}))
                             : p.add(p.arrayOf({name, nsArray, nsObject}));
    objectRefs.push_back(p.add(p.dictOf({kClassname, kClasses}, {name, classes})));
    const auto objects = p.add(p.arrayOf(objectRefs));
    p.root =
        p.add(p.dictOf({kVersion, kArchiver, kTop, kObjects}, {version, archiver, top, objects}));
    return p.build();
}

// --- An independent reading of what we write ---------------------------------------------------

/// Walks an archive written by `encodeDayListArchive` and checks every part of its layout.
std::vector<std::int64_t> readOurLayout(const Bytes& bytes) {
    EXPECT_GE(bytes.size(), 8u);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 8), "bplist00");
    plist_t parsed = nullptr;
    plist_from_bin(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::uint32_t>(bytes.size()), &parsed);
    PlistPtr owner(parsed);
    EXPECT_NE(parsed, nullptr);
    if (parsed == nullptr) {
        return {};
    }
    EXPECT_EQ(plist_dict_get_size(parsed), 4u);
    EXPECT_EQ(stringValue(plist_dict_get_item(parsed, "$archiver")), "NSKeyedArchiver");
    std::uint64_t version = 0;
    plist_get_uint_val(plist_dict_get_item(parsed, "$version"), &version);
    EXPECT_EQ(version, 100000u);
    plist_t top = plist_dict_get_item(parsed, "$top");
    EXPECT_EQ(plist_dict_get_size(top), 1u);
    EXPECT_EQ(uidValue(plist_dict_get_item(top, "root")), 1u);

    plist_t objects = plist_dict_get_item(parsed, "$objects");
    const std::uint32_t count = plist_array_get_size(objects);
    EXPECT_GE(count, 3u);
    EXPECT_EQ(stringValue(plist_array_get_item(objects, 0)), "$null");
    plist_t root = plist_array_get_item(objects, 1);
    EXPECT_EQ(plist_get_node_type(root), PLIST_DICT);
    const std::uint64_t classIndex = uidValue(plist_dict_get_item(root, "$class"));
    EXPECT_EQ(classIndex, count - 1u);
    plist_t classDict = plist_array_get_item(objects, static_cast<std::uint32_t>(classIndex));
    EXPECT_EQ(stringValue(plist_dict_get_item(classDict, "$classname")), "NSArray");
    plist_t classes = plist_dict_get_item(classDict, "$classes");
    EXPECT_EQ(plist_array_get_size(classes), 2u);
    EXPECT_EQ(stringValue(plist_array_get_item(classes, 0)), "NSArray");
    EXPECT_EQ(stringValue(plist_array_get_item(classes, 1)), "NSObject");

    // Numbers sit between the array and the class, each value once.
    std::set<std::int64_t> archivedNumbers;
    for (std::uint32_t i = 2; i + 1 < count; ++i) {
        plist_t number = plist_array_get_item(objects, i);
        EXPECT_EQ(plist_get_node_type(number), PLIST_UINT);
        std::uint64_t raw = 0;
        plist_get_uint_val(number, &raw);
        EXPECT_TRUE(archivedNumbers.insert(static_cast<std::int64_t>(raw)).second);
    }
    std::vector<std::int64_t> values;
    plist_t items = plist_dict_get_item(root, "NS.objects");
    for (std::uint32_t i = 0; i < plist_array_get_size(items); ++i) {
        const std::uint64_t index = uidValue(plist_array_get_item(items, i));
        EXPECT_GE(index, 2u);
        EXPECT_LT(index, count - 1u);
        std::uint64_t raw = 0;
        plist_get_uint_val(plist_array_get_item(objects, static_cast<std::uint32_t>(index)), &raw);
        values.push_back(static_cast<std::int64_t>(raw));
    }
    EXPECT_EQ(archivedNumbers, std::set<std::int64_t>(values.begin(), values.end()));
    return values;
}

// --- Tests ---------------------------------------------------------------------------------------

TEST(DayListArchive, WritesTheKeyedArchiveLayoutAndReadsItBack) {
    const std::vector<std::vector<std::int64_t>> lists = {
        {},
        {1},
        {1, 2, 3, 4, 5, 6, 7},
        {99, 1, 31, 15},
        {3, 3, 3},
        {1, 2, 1, 2, 7},
        {kMin, -1, 0, 255, 256, 65536, 4294967296, kMax},
    };
    for (const auto& list : lists) {
        SCOPED_TRACE(::testing::PrintToString(list));
        const Bytes archive = encodeDayListArchive(list);
        EXPECT_EQ(readOurLayout(archive), list);
        const auto read = readDayListArchive(archive);
        EXPECT_FALSE(read.error.has_value()) << read.error.value_or("");
        EXPECT_EQ(read.values, list);
        EXPECT_EQ(decodeDayListArchive(archive), list);
    }
}

TEST(DayListArchive, EmptyBlobReadsAsTheEmptyList) {
    const auto read = readDayListArchive({});
    EXPECT_TRUE(read.values.empty());
    EXPECT_FALSE(read.error.has_value());
    EXPECT_TRUE(decodeDayListArchive({}).empty());
}

TEST(DayListArchive, ReadsArchivesInThePlatformsShape) {
    struct Case {
        const char* name;
        Bytes archive;
        std::vector<std::int64_t> expected;
    };
    const std::vector<Case> cases = {
        {"mutable array, shared element",
         keyedArchive(array(
             {plist_new_string("$null"),
              dict({{"NS.objects", array({uid(2), uid(3), uid(2)})}, {"$class", uid(4)}}),
              integer(1), integer(7), classObject({"NSMutableArray", "NSArray", "NSObject"})})),
         {1, 7, 1}},
        {"class before the numbers, elements out of order",
         keyedArchive(array(
             {plist_new_string("$null"),
              dict({{"$class", uid(2)}, {"NS.objects", array({uid(4), uid(3), uid(5)})}}),
              classObject({"NSArray", "NSObject"}), integer(kMin), integer(kMax), integer(-42)})),
         {kMax, kMin, -42}},
        {"root elsewhere in $objects",
         keyedArchive(
             array({plist_new_string("$null"), integer(31), classObject({"NSArray", "NSObject"}),
                    dict({{"NS.objects", array({uid(1), uid(1)})}, {"$class", uid(2)}})}),
             dict({{"root", uid(3)}})),
         {31, 31}},
        {"integral reals count as integers",
         keyedArchive(array({plist_new_string("$null"),
                             dict({{"NS.objects", array({uid(2), uid(3)})}, {"$class", uid(4)}}),
                             plist_new_real(3.0), plist_new_real(-1e15),
                             classObject({"NSArray", "NSObject"})})),
         {3, -1000000000000000}},
        {"empty mutable array",
         keyedArchive(array({plist_new_string("$null"),
                             dict({{"NS.objects", array({})}, {"$class", uid(2)}}),
                             classObject({"NSMutableArray", "NSArray", "NSObject"})})),
         {}},
        {"raw bytes: weekdays",
         rawPlatformArchive({RawPlist::int1(1), RawPlist::int1(3), RawPlist::int1(5)}, {0, 1, 2}),
         {1, 3, 5}},
        {"raw bytes: shared day 99",
         rawPlatformArchive({RawPlist::int1(99), RawPlist::int1(1)}, {0, 1, 0}),
         {99, 1, 99}},
        {"raw bytes: NSArray of big numbers",
         rawPlatformArchive({RawPlist::int8(kMin), RawPlist::int8(-1), RawPlist::int8(kMax)},
                            {2, 1, 0}, "NSArray"),
         {kMax, -1, kMin}},
        {"raw bytes: 16-byte integer within range",
         rawPlatformArchive({RawPlist::int16(0, 12)}, {0}),
         {12}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto read = readDayListArchive(c.archive);
        EXPECT_FALSE(read.error.has_value()) << read.error.value_or("");
        EXPECT_EQ(read.values, c.expected);
    }
}

TEST(DayListArchive, ArchivesWhoseRootIsNoIntegerArrayReadAsEmpty) {
    const auto nsArrayOf = [](plist_t element) {
        return keyedArchive(
            array({plist_new_string("$null"),
                   dict({{"NS.objects", array({uid(2), uid(3)})}, {"$class", uid(4)}}), integer(1),
                   element, classObject({"NSArray", "NSObject"})}));
    };
    struct Case {
        const char* name;
        Bytes archive;
    };
    const std::vector<Case> cases = {
        {"$null root", keyedArchive(array({plist_new_string("$null")}), dict({{"root", uid(0)}}))},
        {"string root", keyedArchive(array({plist_new_string("$null"), plist_new_string("x")}))},
        {"number root", keyedArchive(array({plist_new_string("$null"), integer(5)}))},
        {"dictionary root",
         keyedArchive(
             array({plist_new_string("$null"),
                    dict({{"NS.keys", array({})}, {"NS.objects", array({})}, {"$class", uid(2)}}),
                    classObject({"NSDictionary", "NSObject"})}))},
        {"array holding a string", nsArrayOf(plist_new_string("7"))},
        {"array holding a boolean", nsArrayOf(plist_new_bool(1))},
        {"array holding a fraction", nsArrayOf(plist_new_real(2.5))},
        {"array holding an out-of-range real", nsArrayOf(plist_new_real(9.3e18))},
        {"array holding $null",
         keyedArchive(array({plist_new_string("$null"),
                             dict({{"NS.objects", array({uid(0)})}, {"$class", uid(2)}}),
                             classObject({"NSArray", "NSObject"})}))},
        {"no root key", keyedArchive(array({plist_new_string("$null")}), dict({}))},
        {"raw bytes: unsigned beyond 64 signed bits",
         rawPlatformArchive({RawPlist::int1(1), RawPlist::int16(0, 0xFFFFFFFFFFFFFFFFull)},
                            {0, 1})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto read = readDayListArchive(c.archive);
        EXPECT_FALSE(read.error.has_value()) << read.error.value_or("");
        EXPECT_TRUE(read.values.empty());
    }
}

/// A list of nested one-element arrays, `depth` deep: libplist would recurse once per level.
Bytes nestedArrays(std::uint64_t depth) {
    RawPlist p;
    p.refSize = 4;
    for (std::uint64_t i = 0; i < depth; ++i) {
        p.add(i + 1 < depth ? p.arrayOf({i + 1}) : p.arrayOf({}));
    }
    return p.build();
}

/// Arrays that each hold the next one twice: tiny as bytes, 2^levels nodes when expanded.
Bytes doublingArrays(std::uint64_t levels) {
    RawPlist p;
    for (std::uint64_t i = 0; i < levels; ++i) {
        p.add(i + 1 < levels ? p.arrayOf({i + 1, i + 1}) : p.arrayOf({}));
    }
    return p.build();
}

TEST(DayListArchive, DamagedOrForeignBytesAreErrors) {
    const Bytes good = encodeDayListArchive({1, 2, 3});
    Bytes truncated(good.begin(), good.end() - 5);
    Bytes badMagic = good;
    badMagic[7] = '1';
    Bytes trailerOffsetsTooWide = good;
    trailerOffsetsTooWide[good.size() - 26] = 9;
    Bytes tableOutOfRange = good;
    tableOutOfRange[good.size() - 2] = 0xFF;
    tableOutOfRange[good.size() - 1] = 0xFF;
    const std::string xml = "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>";

    RawPlist selfContaining;
    selfContaining.add(selfContaining.arrayOf({0}));
    RawPlist refOutOfRange;
    refOutOfRange.add(refOutOfRange.arrayOf({7}));
    RawPlist countTooLarge;
    countTooLarge.add(countTooLarge.container(0xA, 1000, {0}));

    const auto withObjects = [](std::initializer_list<plist_t> items) {
        return keyedArchive(array(items));
    };
    struct Case {
        const char* name;
        Bytes archive;
        const char* reason; // what the error text names, after the common sentence
    };
    const std::vector<Case> cases = {
        {"text", Bytes{'h', 'e', 'l', 'l', 'o'}, ""},
        {"eight bytes", Bytes{1, 2, 3, 4, 5, 6, 7, 8}, ""},
        {"XML property list", Bytes(xml.begin(), xml.end()), ""},
        {"truncated", truncated, "trailer"},
        {"bad magic", badMagic, ""},
        {"offset size 9", trailerOffsetsTooWide, "trailer"},
        {"offset table outside", tableOutOfRange, "trailer"},
        {"container holding itself", selfContaining.build(), "refers to itself"},
        {"reference out of range", refOutOfRange.build(), "reference is out of range"},
        {"count beyond the data", countTooLarge.build(), "runs past the end"},
        {"60,000 nested arrays", nestedArrays(60'000), "nested too deeply"},
        {"exponential sharing", doublingArrays(60), "too large"},
        {"property list that is an array",
         [] {
             PlistPtr a(array({integer(1)}));
             return toBinary(a.get());
         }(),
         "no keyed archive"},
        {"dictionary without $objects",
         [] {
             PlistPtr d(dict({{"$top", dict({{"root", uid(1)}})}}));
             return toBinary(d.get());
         }(),
         "no keyed archive"},
        {"dictionary without $top",
         [] {
             PlistPtr d(dict({{"$objects", array({plist_new_string("$null")})}}));
             return toBinary(d.get());
         }(),
         "no keyed archive"},
        {"root is no UID",
         keyedArchive(array({plist_new_string("$null")}), dict({{"root", integer(1)}})),
         "no object reference"},
        {"root UID out of range",
         keyedArchive(array({plist_new_string("$null")}), dict({{"root", uid(5)}})),
         "archived object reference is out of range"},
        {"element UID out of range",
         withObjects({plist_new_string("$null"),
                      dict({{"NS.objects", array({uid(9)})}, {"$class", uid(2)}}),
                      classObject({"NSArray", "NSObject"})}),
         "archived object reference is out of range"},
        {"class UID out of range",
         withObjects({plist_new_string("$null"),
                      dict({{"NS.objects", array({})}, {"$class", uid(70000)}})}),
         "archived object reference is out of range"},
        {"array containing itself",
         withObjects({plist_new_string("$null"),
                      dict({{"NS.objects", array({uid(1)})}, {"$class", uid(2)}}),
                      classObject({"NSArray", "NSObject"})}),
         "refer to themselves"},
        {"two objects pointing at each other",
         withObjects({plist_new_string("$null"),
                      dict({{"NS.objects", array({uid(3)})}, {"$class", uid(2)}}),
                      classObject({"NSArray", "NSObject"}), dict({{"next", uid(1)}})}),
         "refer to themselves"},
        {"class that is no class",
         withObjects(
             {plist_new_string("$null"), dict({{"NS.objects", array({})}, {"$class", uid(0)}})}),
         "no valid class"},
        {"elements that are no UIDs",
         withObjects({plist_new_string("$null"),
                      dict({{"NS.objects", array({integer(1)})}, {"$class", uid(2)}}),
                      classObject({"NSArray", "NSObject"})}),
         "elements of an archived array"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto read = readDayListArchive(c.archive);
        ASSERT_TRUE(read.error.has_value());
        EXPECT_EQ(read.error->rfind(kFormatError, 0), 0u) << *read.error;
        EXPECT_NE(read.error->find(c.reason), std::string::npos) << *read.error;
        EXPECT_TRUE(read.values.empty());
    }
}

TEST(DayListArchiveDeathTest, UnreadableBytesStopWithThePrefixAndTheReason) {
    const Bytes garbage{'n', 'o', 't', ' ', 'a', 'n', ' ', 'a', 'r', 'c', 'h', 'i', 'v', 'e'};
    EXPECT_DEATH(decodeDayListArchive(garbage),
                 "^Can't encode data: The data couldn't be read because it isn't in the correct "
                 "format\\.");
    EXPECT_DEATH(decodeDayListArchive(garbage, kCantDecodeData),
                 "^Can't decode data: The data couldn't be read");
}

} // namespace
