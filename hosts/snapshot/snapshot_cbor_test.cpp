// What CBOR can say in more than one way, encoded by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

// The bytes that hexadecimal digits stand for; spaces do not count.
std::string bytes(std::string_view hex) {
    std::string result;
    std::string digits;
    for (const char c : hex) {
        if (c == ' ') continue;
        digits += c;
        if (digits.size() < 2) continue;
        result += static_cast<char>(std::stoi(digits, nullptr, 16));
        digits.clear();
    }
    return result;
}

// A string of up to 23 bytes.
std::string str(const std::string& text) {
    return static_cast<char>(0x60U + text.size()) + text;
}

// {"format": …, "version": 1, "nodes": [], "roots": [], NAME: VALUE} as an object of open length.
std::string cborDocument(const std::string& name, const std::string& value, bool hasNodes = true) {
    std::string text = bytes("BF") + str("format") + str("tolvex-scene") + str("version") + bytes("01");
    if (hasNodes) text += str("nodes") + bytes("80") + str("roots") + bytes("80");
    return text + str(name) + value + bytes("FF");
}

std::string cborWithMesh(const std::string& vertices, const std::string& faces,
                         const std::string& more = {}) {
    return cborDocument(
        "meshes", bytes("81 BF") + str("vertices") + vertices + str("faces") + faces + more + bytes("FF"));
}

SceneSnapshot readCbor(const std::string& text) {
    return readSnapshot(text, SnapshotEncoding::cbor, "s.cbor");
}

std::string cborErrorOf(const std::string& text) {
    try {
        readCbor(text);
    } catch (const SceneError& error) {
        return error.what();
    }
    return "no error";
}

TEST(ReadCbor, TakesIntegersOfEveryWidth) {
    const struct {
        const char* hex;
        std::int32_t value;
    } cases[] = {
        {"17", 23},
        {"1817", 23},
        {"190017", 23},
        {"1A00000017", 23},
        {"1B0000000000000017", 23},
        {"20", -1},
        {"3863", -100},
        {"3903E7", -1000},
        {"3A7FFFFFFF", -2147483647 - 1},
        {"3B0000000000000000", -1},
        {"F94900", 10},
        {"FA41200000", 10},
        {"FB4024000000000000", 10},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(readCbor(cborDocument("animationStart", bytes(c.hex))).animationStart, c.value) << c.hex;
    }
}

TEST(ReadCbor, TakesFloatsOfEveryWidth) {
    const struct {
        const char* hex;
        float value;
    } cases[] = {
        {"F93E00", 1.5F},
        {"FA3FC00000", 1.5F},
        {"FB3FF8000000000000", 1.5F},
        {"F90001", 0x1p-24F},
        {"F97C00", INFINITY},
        {"FAFF800000", -INFINITY},
        {"03", 3},
        {"FB3FB999999999999A", 0.1F},
    };
    for (const auto& c : cases) {
        const std::string text =
            cborDocument("materials", bytes("81 A3") + str("class") + str("C") + str("name") + str("N") +
                                          str("opacity") + bytes(c.hex));
        EXPECT_EQ(readCbor(text).materials.at(0).opacity, c.value) << c.hex;
    }
    const std::string text =
        cborDocument("materials", bytes("81 A3") + str("class") + str("C") + str("name") + str("N") +
                                      str("opacity") + bytes("F97E00"));
    EXPECT_TRUE(std::isnan(readCbor(text).materials.at(0).opacity));
}

TEST(ReadCbor, TakesTypedArraysOfEachKind) {
    const std::vector<host::Point3> vertices = {{0, 1, 2}};
    const std::vector<FaceIndices> faces = {{0, 0, 0}};
    const std::string floats = bytes("D855 4C 00000000 0000803F 00000040");
    const std::string uints = bytes("D846 4C 00000000 01000000 02000000");
    const std::string sints = bytes("D84E 4C 00000000 01000000 02000000");
    const std::string chunks = bytes("D855 5F 42 0000 4A 0000 0000803F 00000040 FF");
    const std::string list = bytes("83 00 F93C00 FA40000000");
    const std::string openList = bytes("9F 00 01 02 FF");
    const std::string wideHead = bytes("DA00000055 5B000000000000000C 00000000 0000803F 00000040");
    for (const auto& points : {floats, uints, sints, chunks, list, openList, wideHead}) {
        EXPECT_EQ(readCbor(cborWithMesh(points, bytes("83 00 00 00"))).meshes.at(0).vertices, vertices);
    }
    for (const auto& hex : {"D855 4C 000000000000000000000000", "D846 4C 000000000000000000000000",
                            "D84E 4C 000000000000000000000000"}) {
        EXPECT_EQ(readCbor(cborWithMesh(floats, bytes(hex))).meshes.at(0).faces, faces) << hex;
    }
}

TEST(ReadCbor, TakesStringsInChunksAndTheSelfDescribingTag) {
    const std::string text =
        bytes("D9D9F7") + cborDocument("assetFolders", bytes("81 7F 61 61 62 6262 60 FF"));
    EXPECT_EQ(readCbor(text).assetFolders, std::vector<std::u16string>{u"abb"});
    const std::string name = bytes("BF 7F") + str("form") + str("at") + bytes("FF") + str("tolvex-scene");
    const std::string rest =
        str("version") + bytes("01") + str("nodes") + bytes("80") + str("roots") + bytes("80 FF");
    EXPECT_TRUE(readCbor(name + rest).nodes.empty());
}

TEST(ReadCbor, PassesOverExtrasOfAnyKind) {
    for (const auto& hex :
         {"F7", "E0", "F8FF", "C100", "D4F6", "D855 41 00", "40", "5F 41 00 FF", "7F FF", "61 FF", "A1 01 02",
          "A1 80 A0", "BF A1 00 00 9F FF FF", "82 C2 41 01 D9D9F7 00", "FB7FF0000000000000"}) {
        EXPECT_EQ(cborErrorOf(cborDocument("extras", bytes(hex))), "no error") << hex;
    }
}

struct CborErrorCase {
    const char* name;
    std::string text;
    std::string error;
};

void expectCborErrors(std::initializer_list<CborErrorCase> cases) {
    for (const CborErrorCase& c : cases)
        EXPECT_EQ(cborErrorOf(c.text), c.error) << c.name;
}

TEST(ReadCbor, TellsErrors) {
    const std::string valid = cborDocument("animationStart", bytes("01"));
    const std::string other =
        "s.cbor: this is not a scene snapshot: neither JSON nor CBOR with an object on top";
    expectCborErrors({
        {"empty", "", "s.cbor: the file is empty"},
        {"picture", "\x89PNG\r\n", other},
        {"text", "hello", other},
        {"tag alone", bytes("D9D9F7"), other},
        {"cut off", valid.substr(0, 30), "s.cbor: offset 30: the document is cut off here (30 bytes)"},
        {"cut off after a name", cborDocument("nodes", "", false).substr(0, 36),
         "s.cbor: /nodes: offset 36: the document is cut off here (36 bytes)"},
        {"string longer than the file", cborDocument("assetFolders", bytes("81 7BFFFFFFFFFFFFFFFF")),
         "s.cbor: /assetFolders/0: offset 58: the document is cut off here (68 bytes)"},
        {"list longer than the file", cborDocument("assetFolders", bytes("9BFFFFFFFFFFFFFFFF")),
         "s.cbor: /assetFolders/0: offset 66: not CBOR: a stop code where an item is expected"},
        {"map longer than the file", bytes("BBFFFFFFFFFFFFFFFF"),
         "s.cbor: offset 9: the document is cut off here (9 bytes)"},
        {"reserved head", cborDocument("animationStart", bytes("1C")),
         "s.cbor: /animationStart: offset 59: not CBOR"},
        {"trailing bytes", valid + '\0',
         "s.cbor: offset 61: the document ends here, but further bytes follow"},
        {"number as name", bytes("A1 01 02"), "s.cbor: offset 1: the name of a member must be a string"},
        {"tag as name", bytes("A1 D855 40 02"),
         "s.cbor: offset 1: a tag where the name of a member is expected"},
        {"name not UTF-8", bytes("A1 61 FF 02"), "s.cbor: offset 1: the name of a member is not valid UTF-8"},
        {"string not UTF-8", cborDocument("assetFolders", bytes("82 60 61 FF")),
         "s.cbor: /assetFolders/1: the string is not valid UTF-8"},
        {"stop after a name", cborDocument("animationStart", ""),
         "s.cbor: /animationStart: offset 59: not CBOR: a stop code where an item is expected"},
        {"chunk of another kind", cborDocument("assetFolders", bytes("81 7F 41 00 FF")),
         "s.cbor: /assetFolders/0: offset 59: not CBOR: a string in chunks holds something else"},
        {"undefined", cborDocument("animationStart", bytes("F7")),
         "s.cbor: /animationStart: offset 59: bytes and simple values have no meaning here"},
        {"bytes", cborDocument("animationStart", bytes("4100")),
         "s.cbor: /animationStart: offset 59: bytes and simple values have no meaning here"},
        {"tag", cborDocument("animationStart", bytes("C101")),
         "s.cbor: /animationStart: offset 59: tag 1 is not expected"},
        {"tag of no bytes", cborDocument("animationStart", bytes("D85501")),
         "s.cbor: /animationStart: offset 61: tag 85 without the bytes of a typed array"},
        {"typed array elsewhere", cborDocument("animationStart", bytes("D85540")),
         "s.cbor: /animationStart: a typed array where a number is expected"},
        {"typed array of references", cborDocument("assetFolders", bytes("D84640")),
         "s.cbor: /assetFolders: a typed array where a list is expected"},
        {"typed array cut", cborWithMesh(bytes("D855 43 000000"), bytes("80")),
         "s.cbor: /meshes/0/vertices: offset 64: a typed array of 3 bytes, where 4 a number are expected"},
        {"typed array of half a vertex", cborWithMesh(bytes("D855 44 00000000"), bytes("80")),
         "s.cbor: /meshes/0/vertices: 1 numbers, where 3 a vertex are expected"},
        {"corner in a typed array", cborWithMesh(bytes("80"), bytes("D846 4C 00000000 01000000 02000000")),
         "s.cbor: /meshes/0/faces/0: vertex 0 does not exist (0 vertices)"},
        {"negative in a typed array", cborWithMesh(bytes("80"), bytes("D84E 4C 00000000 00000000 FFFFFFFF")),
         "s.cbor: /meshes/0/faces/2: -1 is out of range (0 to 4294967295)"},
        {"not a number as an index", cborWithMesh(bytes("80"), bytes("83 00 F97E00 00")),
         "s.cbor: /meshes/0/faces/1: nan is out of range (0 to 4294967295)"},
        {"huge integer", cborDocument("animationStart", bytes("1BFFFFFFFFFFFFFFFF")),
         "s.cbor: /animationStart: 18446744073709551616 is out of range (-2147483648 to 2147483647)"},
    });
}

}  // namespace
}  // namespace velinor
