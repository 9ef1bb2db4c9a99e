// Keyed archives of integer lists: what we write is read back by an independent walk of the
// property list, archives in the shape the phone platform writes are read, non-lists read as the
// empty list, and damaged or hostile bytes are errors without a crash.
#include "records/DayListArchive.h"

#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <plist/plist.h>
#include <set>
#include <string>
#include <vector>

using namespace tidemark;

namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

struct PlistDeleter {
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

Bytes toBinary(plist_t node) {
    PlistPtr owner(node);
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

std::uint64_t uintValue(plist_t node, plist_type type) {
    std::uint64_t value = 0;
    EXPECT_TRUE(node != nullptr && plist_get_node_type(node) == type);
    if (node != nullptr && type == PLIST_UID && plist_get_node_type(node) == type) {
        plist_get_uid_val(node, &value);
    } else if (node != nullptr && plist_get_node_type(node) == type) {
        plist_get_uint_val(node, &value);
    }
    return value;
}

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
    return toBinary(dict({{"$version", plist_new_uint(100000)},
                          {"$archiver", plist_new_string("NSKeyedArchiver")},
                          {"$top", top ? top : dict({{"root", uid(1)}})},
                          {"$objects", objects}}));
}

/// Writes a binary property list from hand-made objects, for shapes libplist would not produce.
struct RawPlist {
    std::vector<Bytes> objects;
    std::uint64_t root = 0;
    std::uint8_t refSize = 1;

    static void appendBigEndian(Bytes& out, std::uint64_t value, std::size_t n) {
        for (std::size_t i = n; i-- > 0;) {
            out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }
    std::uint64_t add(Bytes object) {
        objects.push_back(std::move(object));
        return objects.size() - 1;
    }
    std::uint64_t ascii(std::string_view text) {
        Bytes out = container(0x5, text.size(), {});
        out.insert(out.end(), text.begin(), text.end());
        return add(out);
    }
    std::uint64_t uid(std::uint8_t value) { return add({0x80, value}); }
    Bytes container(std::uint8_t kind, std::uint64_t count,
                    const std::vector<std::uint64_t>& refs) {
        Bytes out{static_cast<std::uint8_t>(kind << 4 | (count < 15 ? count : 0x0F))};
        if (count >= 15) {
            out.push_back(0x13);
            appendBigEndian(out, count, 8);
        }
        for (const auto ref : refs) {
            appendBigEndian(out, ref, refSize);
        }
        return out;
    }
    std::uint64_t arrayOf(const std::vector<std::uint64_t>& refs) {
        return add(container(0xA, refs.size(), refs));
    }
    std::uint64_t dictOf(std::vector<std::uint64_t> keys,
                         const std::vector<std::uint64_t>& values) {
        const auto count = keys.size();
        keys.insert(keys.end(), values.begin(), values.end());
        return add(container(0xD, count, keys));
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

/// An NSMutableArray archive laid out byte by byte as the platform writes it (keys and class
/// names shared, one-byte integers), whose elements are `numbers` in `order`.
Bytes rawPlatformArchive(const std::vector<Bytes>& numbers, const std::vector<int>& order) {
    RawPlist p;
    const auto version = p.add({0x12, 0x00, 0x01, 0x86, 0xA0}); // 100000 in four bytes
    const auto top = p.dictOf({p.ascii("root")}, {p.uid(1)});
    std::vector<std::uint64_t> elements;
    for (const int k : order) {
        elements.push_back(p.uid(static_cast<std::uint8_t>(2 + k)));
    }
    const auto elementArray = p.arrayOf(elements);
    const auto array =
        p.dictOf({p.ascii("NS.objects"), p.ascii("$class")},
                 {elementArray, p.uid(static_cast<std::uint8_t>(2 + numbers.size()))});
    std::vector<std::uint64_t> objects{p.ascii("$null"), array};
    for (const auto& number : numbers) {
        objects.push_back(p.add(number));
    }
    const auto name = p.ascii("NSMutableArray");
    const auto classes = p.arrayOf({name, p.ascii("NSArray"), p.ascii("NSObject")});
    objects.push_back(p.dictOf({p.ascii("$classname"), p.ascii("$classes")}, {name, classes}));
    const auto objectArray = p.arrayOf(objects);
    p.root =
        p.dictOf({p.ascii("$version"), p.ascii("$archiver"), p.ascii("$top"), p.ascii("$objects")},
                 {version, p.ascii("NSKeyedArchiver"), top, objectArray});
    return p.build();
}

Bytes int16(std::uint64_t high, std::uint64_t low) {
    Bytes out{0x14};
    RawPlist::appendBigEndian(out, high, 8);
    RawPlist::appendBigEndian(out, low, 8);
    return out;
}

/// Walks an archive written by `encodeDayListArchive`, checking its layout, for its values.
std::vector<std::int64_t> readOurLayout(const Bytes& bytes) {
    plist_t parsed = nullptr;
    plist_from_bin(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::uint32_t>(bytes.size()), &parsed);
    PlistPtr owner(parsed);
    EXPECT_TRUE(parsed != nullptr && plist_dict_get_size(parsed) == 4u);
    if (parsed == nullptr) {
        return {};
    }
    EXPECT_EQ(stringValue(plist_dict_get_item(parsed, "$archiver")), "NSKeyedArchiver");
    EXPECT_EQ(uintValue(plist_dict_get_item(parsed, "$version"), PLIST_UINT), 100000u);
    plist_t top = plist_dict_get_item(parsed, "$top");
    EXPECT_EQ(plist_dict_get_size(top), 1u);
    EXPECT_EQ(uintValue(plist_dict_get_item(top, "root"), PLIST_UID), 1u);
    plist_t objects = plist_dict_get_item(parsed, "$objects");
    const std::uint32_t count = plist_array_get_size(objects);
    EXPECT_EQ(stringValue(plist_array_get_item(objects, 0)), "$null");
    plist_t root = plist_array_get_item(objects, 1);
    // The class comes last; the numbers sit between the array and the class, each value once.
    EXPECT_EQ(uintValue(plist_dict_get_item(root, "$class"), PLIST_UID), count - 1u);
    plist_t classDict = plist_array_get_item(objects, count - 1);
    EXPECT_EQ(stringValue(plist_dict_get_item(classDict, "$classname")), "NSArray");
    plist_t classes = plist_dict_get_item(classDict, "$classes");
    EXPECT_EQ(plist_array_get_size(classes), 2u);
    EXPECT_EQ(stringValue(plist_array_get_item(classes, 0)), "NSArray");
    EXPECT_EQ(stringValue(plist_array_get_item(classes, 1)), "NSObject");
    std::set<std::int64_t> archived;
    for (std::uint32_t i = 2; i + 1 < count; ++i) {
        const auto value = uintValue(plist_array_get_item(objects, i), PLIST_UINT);
        EXPECT_TRUE(archived.insert(static_cast<std::int64_t>(value)).second);
    }
    std::vector<std::int64_t> values;
    plist_t items = plist_dict_get_item(root, "NS.objects");
    for (std::uint32_t i = 0; i < plist_array_get_size(items); ++i) {
        const auto index = uintValue(plist_array_get_item(items, i), PLIST_UID);
        EXPECT_TRUE(index >= 2u && index + 1 < count);
        values.push_back(static_cast<std::int64_t>(uintValue(
            plist_array_get_item(objects, static_cast<std::uint32_t>(index)), PLIST_UINT)));
    }
    EXPECT_EQ(archived, std::set<std::int64_t>(values.begin(), values.end()));
    return values;
}

plist_t nsArray(std::initializer_list<plist_t> elements, std::uint64_t classUid) {
    return dict({{"NS.objects", array(elements)}, {"$class", uid(classUid)}});
}

TEST(DayListArchive, WritesTheKeyedArchiveLayoutAndReadsItBack) {
    const std::vector<std::vector<std::int64_t>> lists = {
        {}, {99, 1, 31, 15}, {1, 2, 1, 2, 7}, {kMin, -1, 0, 255, 256, 65536, 4294967296, kMax}};
    for (const auto& list : lists) {
        SCOPED_TRACE(::testing::PrintToString(list));
        const Bytes archive = encodeDayListArchive(list);
        EXPECT_EQ(readOurLayout(archive), list);
        const auto read = readDayListArchive(archive);
        EXPECT_FALSE(read.error.has_value()) << read.error.value_or("");
        EXPECT_EQ(read.values, list);
        EXPECT_EQ(decodeDayListArchive(archive), list);
    }
    // An empty blob is the empty list too.
    EXPECT_EQ(readDayListArchive({}).error, std::nullopt);
    EXPECT_TRUE(decodeDayListArchive({}).empty());
}

// Archives in the platform's shape; those whose root is no array of integers read as empty.
TEST(DayListArchive, ReadsArchivesInThePlatformsShape) {
    const auto null = [] { return plist_new_string("$null"); };
    const auto holding = [&](plist_t element) {
        return keyedArchive(array({null(), nsArray({uid(2), uid(3)}, 4), integer(1), element,
                                   classObject({"NSArray", "NSObject"})}));
    };
    struct Case {
        const char* name;
        Bytes archive;
        std::vector<std::int64_t> expected;
    };
    const std::vector<Case> cases = {
        {"mutable array, shared element",
         keyedArchive(array({null(), nsArray({uid(2), uid(3), uid(2)}, 4), integer(1), integer(7),
                             classObject({"NSMutableArray", "NSArray", "NSObject"})})),
         {1, 7, 1}},
        {"class before the numbers, elements out of order",
         keyedArchive(array({null(), nsArray({uid(4), uid(3), uid(5)}, 2),
                             classObject({"NSArray", "NSObject"}), integer(kMin), integer(kMax),
                             integer(-42)})),
         {kMax, kMin, -42}},
        {"root elsewhere in $objects",
         keyedArchive(array({null(), integer(31), classObject({"NSArray", "NSObject"}),
                             nsArray({uid(1), uid(1)}, 2)}),
                      dict({{"root", uid(3)}})),
         {31, 31}},
        {"integral reals count as integers",
         keyedArchive(array({null(), nsArray({uid(2), uid(3)}, 4), plist_new_real(3.0),
                             plist_new_real(-1e15), classObject({"NSArray", "NSObject"})})),
         {3, -1000000000000000}},
        {"raw bytes: shared day 99",
         rawPlatformArchive({{0x10, 99}, {0x10, 1}}, {0, 1, 0}),
         {99, 1, 99}},
        {"raw bytes: 16-byte integer within range", rawPlatformArchive({int16(0, 12)}, {0}), {12}},
        {"$null root", keyedArchive(array({null()}), dict({{"root", uid(0)}})), {}},
        {"number root", keyedArchive(array({null(), integer(5)})), {}},
        {"dictionary root",
         keyedArchive(array(
             {null(), dict({{"NS.keys", array({})}, {"NS.objects", array({})}, {"$class", uid(2)}}),
              classObject({"NSDictionary", "NSObject"})})),
         {}},
        {"no root key", keyedArchive(array({null()}), dict({})), {}},
        {"array holding a string", holding(plist_new_string("7")), {}},
        {"array holding a fraction", holding(plist_new_real(2.5)), {}},
        {"array holding an out-of-range real", holding(plist_new_real(9.3e18)), {}},
        {"array holding $null", holding(null()), {}},
        {"raw bytes: unsigned beyond 64 signed bits",
         rawPlatformArchive({{0x10, 1}, int16(0, 0xFFFFFFFFFFFFFFFFull)}, {0, 1}),
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto read = readDayListArchive(c.archive);
        EXPECT_FALSE(read.error.has_value()) << read.error.value_or("");
        EXPECT_EQ(read.values, c.expected);
    }
}

TEST(DayListArchive, DamagedOrForeignBytesAreErrors) {
    const Bytes good = encodeDayListArchive({1, 2, 3});
    Bytes badMagic = good;
    badMagic[7] = '1';
    Bytes offsetsTooWide = good;
    offsetsTooWide[good.size() - 26] = 9;
    const std::string xml = "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>";
    const auto raw = [](auto fill, std::uint8_t refSize = 1) {
        RawPlist p;
        p.refSize = refSize;
        fill(p);
        return p.build();
    };
    const auto null = [] { return plist_new_string("$null"); };
    struct Case {
        const char* name;
        Bytes archive;
        const char* reason; // what the error text names, after the common sentence
    };
    const std::vector<Case> cases = {
        {"text", Bytes{'h', 'e', 'l', 'l', 'o'}, ""},
        {"bad magic", badMagic, ""},
        {"XML property list", Bytes(xml.begin(), xml.end()), ""},
        {"truncated", Bytes(good.begin(), good.end() - 5), "trailer"},
        {"offset size 9", offsetsTooWide, "trailer"},
        {"container holding itself", raw([](RawPlist& p) { p.arrayOf({0}); }), "refers to itself"},
        {"reference out of range", raw([](RawPlist& p) { p.arrayOf({7}); }),
         "reference is out of range"},
        {"count beyond the data", raw([](RawPlist& p) { p.add(p.container(0xA, 1000, {0})); }),
         "runs past the end"},
        // libplist would recurse once per level here.
        {"60,000 nested arrays",
         raw(
             [](RawPlist& p) {
                 for (std::uint64_t i = 1; i < 60'000; ++i) {
                     p.arrayOf({i});
                 }
                 p.arrayOf({});
             },
             4),
         "nested too deeply"},
        // Tiny as bytes, 2^60 nodes when expanded.
        {"exponential sharing", raw([](RawPlist& p) {
             for (std::uint64_t i = 0; i < 59; ++i) {
                 p.arrayOf({i + 1, i + 1});
             }
             p.arrayOf({});
         }),
         "too large"},
        {"property list that is an array", toBinary(array({integer(1)})), "no keyed archive"},
        {"dictionary without $top", toBinary(dict({{"$objects", array({null()})}})),
         "no keyed archive"},
        {"root is no UID", keyedArchive(array({null()}), dict({{"root", integer(1)}})),
         "no object reference"},
        {"class UID out of range", keyedArchive(array({null(), nsArray({}, 70000)})),
         "archived object reference is out of range"},
        {"two objects pointing at each other",
         keyedArchive(array({null(), nsArray({uid(3)}, 2), classObject({"NSArray", "NSObject"}),
                             dict({{"next", uid(1)}})})),
         "refer to themselves"},
        {"class that is no class", keyedArchive(array({null(), nsArray({}, 0)})), "no valid class"},
        {"elements that are no UIDs",
         keyedArchive(
             array({null(), nsArray({integer(1)}, 2), classObject({"NSArray", "NSObject"})})),
         "elements of an archived array"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto read = readDayListArchive(c.archive);
        ASSERT_TRUE(read.error.has_value());
        EXPECT_EQ(read.error->rfind(
                      "The data couldn't be read because it isn't in the correct format.", 0),
                  0u)
            << *read.error;
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
