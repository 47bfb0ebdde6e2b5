#include "hosts/ase/ase_lexer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

// What `use` is refused with on `text`; empty where it is not.
template <class Use>
std::string refusal(std::string_view text, Use use) {
    AseLexer lexer(text, "a.ase");
    try {
        use(lexer);
    } catch (const SceneError& error) {
        return error.what();
    }
    return {};
}

float numberOf(std::string_view text) {
    return AseLexer(text, "a.ase").anyNumber();
}

TEST(AseLexer, GoesFromKeywordToKeywordAndPassesOverTheRest) {
    AseLexer lexer("*A 1 word 2 \"} *X {\" *B { *C { } \"{\" } *D\r\n*E{ *F 1 } *G", "a.ase");
    EXPECT_EQ(lexer.next(), "A");
    EXPECT_EQ(lexer.integer(0, 9), 1);
    EXPECT_EQ(lexer.next(), "B");
    EXPECT_EQ(lexer.next(), "D");
    EXPECT_EQ(lexer.next(), "E");
    lexer.enter("E");
    EXPECT_EQ(lexer.depth(), 1U);
    EXPECT_EQ(lexer.next(), "F");
    EXPECT_EQ(lexer.next(), std::nullopt);
    EXPECT_EQ(lexer.depth(), 0U);
    EXPECT_EQ(lexer.next(), "G");
    EXPECT_EQ(lexer.next(), std::nullopt);
}

TEST(AseLexer, AStringEndsAtTheLastQuoteOfItsKind) {
    struct Case {
        std::string_view text;
        std::string_view string;
    };
    for (const Case& c : {
             Case{"\"Box [color: red]\"", "Box [color: red]"},
             Case{"\"\"", ""},
             Case{"  \t\"a\" {", "a"},
             Case{"\"a\"\r\n\"b\"", "a"},
             Case{"\"say \"hi\" to all\"\n", "say \"hi\" to all"},
             Case{"\"a{b}*c\" }", "a{b}*c"},
             Case{"\"a\" *NODE_NAME \"b\"", "a"},
             Case{"\"back\\slash\\\"", "back\\slash\\"},
         }) {
        EXPECT_EQ(AseLexer(c.text, "a.ase").text(), c.string) << c.text;
    }
    EXPECT_EQ(refusal("*A\n  \"open\n\"", [](AseLexer& lexer) { lexer.next(), lexer.text(); }),
              "a.ase: line 2, column 3: the string that begins here does not end on its line");
    EXPECT_EQ(refusal("5", [](AseLexer& lexer) { lexer.text(); }),
              "a.ase: line 1, column 1: there is \"5\" where a string in quotes is expected");
}

// A keyword with a string alone on its line is the usual case, and names hold anything.
TEST(AseLexer, AStringAloneOnItsLineEndsAtTheLastQuote) {
    struct Case {
        std::string_view text;
        std::string_view string;
    };
    for (const Case& c : {
             Case{"\"Box \"A\" {x} *b\"\r\n}", "Box \"A\" {x} *b"},
             Case{"\"a\" *b\" \t\r*MAP_CLASS \"c\"", "a\" *b"},
             Case{"\"a\" } { \"", "a\" } { "},
             Case{"\"a\" {b\" {\n*HELPEROBJECT {", "a\" {b"},
             Case{"\"*MAIN\" *d\"\n", "*MAIN\" *d"},
             // More than one keyword on a line
             Case{"\"a\" *NODE_NAME \"b\"\n", "a"},
             Case{"\"a\" } } *NODE_NAME \"b\"\n", "a"},
             Case{"\"a\" { *GROUP \"b\" {\n", "a"},
             Case{"\"a\" *NODE_TM {\n", "a"},
             Case{"\"a\" } *b\" }\n", "a"},
         }) {
        EXPECT_EQ(AseLexer(c.text, "a.ase").text(), c.string) << c.text;
    }
}

TEST(AseLexer, EachLineHasItsOwnLastQuote) {
    AseLexer lexer(
        "*A \"1\" *b\"\n*B { *NODE_NAME \"2\" *NODE_NAME \"3\" *d\"\n*UNKNOWN { \"} *e\"\n}\n*C "
        "\"{\"\n*D }",
        "a.ase");
    EXPECT_EQ(lexer.next(), "A");
    EXPECT_EQ(lexer.text(), "1\" *b");
    EXPECT_EQ(lexer.next(), "B");
    lexer.enter("B");
    EXPECT_EQ(lexer.next(), "NODE_NAME");
    EXPECT_EQ(lexer.text(), "2");
    EXPECT_EQ(lexer.next(), "NODE_NAME");
    EXPECT_EQ(lexer.text(), "3\" *d");
    EXPECT_EQ(lexer.next(), "UNKNOWN");
    EXPECT_EQ(lexer.next(), "C");
    EXPECT_EQ(lexer.next(), "D");
}

TEST(AseLexer, AQuoteThatNothingClosesIsPassedOverInWhatIsNotRead) {
    AseLexer lexer("*A \"open { \n*B { \"open } \n } *C", "a.ase");
    EXPECT_EQ(lexer.next(), "A");
    EXPECT_EQ(lexer.next(), "B");
    EXPECT_EQ(lexer.next(), "C");
}

// Of what is not read, nothing tells where a string ends but what follows it.
TEST(AseLexer, BracesCountInWhatIsNotRead) {
    for (const char* text : {"*FOO \"abc\" { \"def\"\n}\n*NEXT", "*FOO { \"abc\" } \"def\"\n*NEXT"}) {
        AseLexer lexer(text, "a.ase");
        EXPECT_EQ(lexer.next(), "FOO") << text;
        EXPECT_EQ(lexer.next(), "NEXT") << text;
        EXPECT_EQ(lexer.next(), std::nullopt) << text;
    }
}

TEST(AseLexer, WordsMayStandInQuotes) {
    EXPECT_EQ(AseLexer(" Free\r\n", "a.ase").word(), "Free");
    EXPECT_EQ(AseLexer("\"Free\"\n", "a.ase").word(), "Free");
    EXPECT_EQ(refusal("}", [](AseLexer& lexer) { lexer.word(); }),
              "a.ase: line 1, column 1: there is \"}\" where a word is expected");
}

TEST(AseLexer, NumbersHaveAPointOrAComma) {
    struct Case {
        std::string_view text;
        float value;
    };
    for (const Case& c : {
             Case{"1.5000", 1.5F},
             Case{"1,5000\t2", 1.5F},
             Case{"-23.0769", -23.0769F},
             Case{"-23,0769", -23.0769F},
             Case{"+2", 2},
             Case{"1e3", 1000},
             Case{"1,5e-1", 0.15F},
             Case{".5", 0.5F},
             Case{"5.", 5},
             Case{"16777217", 16777216},
             Case{"0.100000001490116119384765625", 0.1F},
             Case{"1e-46", 0},
             Case{"1e-400", 0},
             Case{"3}", 3},
             Case{"1e-40", 1e-40F},
         }) {
        EXPECT_EQ(numberOf(c.text), c.value) << c.text;
    }
    EXPECT_TRUE(std::signbit(numberOf("-0.0000")));
    EXPECT_TRUE(std::signbit(numberOf("-1e-400")));
    EXPECT_EQ(numberOf("0." + std::string(400, '0') + "1"), 0);
    EXPECT_TRUE(std::isinf(numberOf(std::string(400, '9'))));
}

TEST(AseLexer, ManyDecimalsGiveTheNearestFloatWithAPointAndWithAComma) {
    std::uint32_t random = 1;
    for (int i = 0; i < 20000; ++i) {
        random = random * 1664525U + 1013904223U;
        const auto value = std::bit_cast<float>(random);
        if (!std::isfinite(value)) continue;
        std::string text(64, '\0');
        text.resize(static_cast<std::size_t>(
            std::snprintf(text.data(), text.size(), "%.9g", static_cast<double>(value))));
        EXPECT_EQ(numberOf(text), value) << text;
        if (const std::size_t point = text.find('.'); point != std::string::npos) text[point] = ',';
        EXPECT_EQ(numberOf(text), value) << text;
    }
}

TEST(AseLexer, NumbersThatAreNoneAreReadWhereTheyMayBe) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const std::string_view text : {"1.#QNAN", "-1.#IND", "-1,#IND00", "1.#SNAN0", "nan", "-nan(ind)"})
        EXPECT_TRUE(std::isnan(numberOf(text))) << text;
    for (const std::string_view text : {"1.#INF", "1,#INF00", "inf", "1e39", "1e400"})
        EXPECT_EQ(numberOf(text), kInfinity) << text;
    for (const std::string_view text : {"-1.#INF", "-inf", "-1e39", "-1e400"})
        EXPECT_EQ(numberOf(text), -kInfinity) << text;
    EXPECT_EQ(refusal("*A 1\t1.#QNAN", [](AseLexer& lexer) { lexer.next(), lexer.number(), lexer.number(); }),
              "a.ase: line 1, column 6: \"1.#QNAN\" is no number that can be used here");
    for (const std::string_view text : {"1.5x", "--1", "1,2,3", "-", "abc", "+-1", "1.#"}) {
        const std::string message = refusal(text, [](AseLexer& lexer) { lexer.number(); });
        EXPECT_TRUE(message.starts_with("a.ase: line 1, column 1: ")) << text << ": " << message;
    }
    EXPECT_EQ(refusal("*A 1 *B", [](AseLexer& lexer) { lexer.next(), lexer.number(), lexer.number(); }),
              "a.ase: line 1, column 6: there is \"*\" where a number is expected");
    EXPECT_EQ(refusal("*A 1", [](AseLexer& lexer) { lexer.next(), lexer.number(), lexer.number(); }),
              "a.ase: line 1, column 5: the file ends here where a number is expected");
}

TEST(AseLexer, WholeNumbersAndIndicesHaveARange) {
    EXPECT_EQ(AseLexer("-7 ", "a.ase").integer(-7, 7), -7);
    const auto integer = [](AseLexer& lexer) { lexer.integer(0, 65535); };
    EXPECT_EQ(refusal(" 65536", integer),
              "a.ase: line 1, column 2: \"65536\" is out of range; from 0 to 65535 is possible");
    EXPECT_EQ(
        refusal("99999999999999999999", integer),
        "a.ase: line 1, column 1: \"99999999999999999999\" is out of range; from 0 to 65535 is possible");
    EXPECT_EQ(refusal("1.5", integer),
              "a.ase: line 1, column 1: there is \"1.5\" where a whole number is expected");
    AseLexer lexer("0: 2 1", "a.ase");
    EXPECT_EQ(lexer.index(3, "vertex"), 0U);
    EXPECT_EQ(lexer.index(3, "vertex"), 2U);
    const auto index = [](AseLexer& l) { l.index(3, "vertex"); };
    EXPECT_EQ(refusal("3", index), "a.ase: line 1, column 1: vertex \"3\" does not exist; there are 3");
    EXPECT_EQ(refusal("99999999999", index),
              "a.ase: line 1, column 1: vertex \"99999999999\" does not exist; there are 3");
    EXPECT_EQ(refusal("-1", index),
              "a.ase: line 1, column 1: there is \"-1\" where the number of a vertex is expected");
}

TEST(AseLexer, LabelsNameTheCorners) {
    AseLexer lexer("A:    7 B:8", "a.ase");
    lexer.label('A');
    EXPECT_EQ(lexer.index(9, "vertex"), 7U);
    lexer.label('B');
    EXPECT_EQ(lexer.index(9, "vertex"), 8U);
    EXPECT_EQ(refusal("B: 1", [](AseLexer& l) { l.label('A'); }),
              "a.ase: line 1, column 1: there is \"B:\" where \"A:\" is expected");
}

TEST(AseLexer, SmoothingListsHoldGroupsFrom1To32) {
    struct Case {
        std::string_view text;
        std::uint32_t mask;
    };
    for (const Case& c : {
             Case{"*MESH_MTLID 0", 0},
             Case{"", 0},
             Case{"1 \t*M", 1},
             Case{"32", 0x80000000U},
             Case{"1,2,32", 0x80000003U},
             Case{"1, 3", 5},
             Case{"0", 0},
             Case{"2,2", 2},
             Case{"4 5", 24},
             Case{"\n}", 0},
         }) {
        EXPECT_EQ(AseLexer(c.text, "a.ase").smoothingGroups(), c.mask) << c.text;
    }
    const auto groups = [](AseLexer& lexer) { lexer.smoothingGroups(); };
    EXPECT_EQ(refusal("1,33", groups),
              "a.ase: line 1, column 3: there is no smoothing group \"33\"; they are 1 to 32");
    EXPECT_EQ(refusal("1.5", groups),
              "a.ase: line 1, column 1: there is \"1.5\" where the number of a smoothing group is expected");
}

TEST(AseLexer, LinesEndInAnyWayAndColumnsCountCharacters) {
    const auto toEnd = [](AseLexer& lexer) {
        lexer.next();
        lexer.refuse(lexer.place() + 1, "here");
    };
    EXPECT_EQ(refusal("\n\r\n\r  *A", toEnd), "a.ase: line 4, column 4: here");
    EXPECT_EQ(refusal("\xC3\xA4\xE2\x82\xAC *A", toEnd), "a.ase: line 1, column 5: here");
}

TEST(AseLexer, BracesMustMatch) {
    EXPECT_EQ(refusal("*A { *B 1\n",
                      [](AseLexer& lexer) {
                          lexer.next();
                          lexer.enter("A");
                          lexer.next();
                          lexer.next();
                      }),
              "a.ase: line 2, column 1: the file ends within the block of *A that begins at line 1; it is "
              "cut off, so "
              "export it again");
    EXPECT_EQ(refusal("\n*A { { }", [](AseLexer& lexer) { lexer.next(), lexer.next(); }),
              "a.ase: line 2, column 9: the file ends within the block of *A that begins at line 2; it is "
              "cut off, so "
              "export it again");
    EXPECT_EQ(refusal("*A }", [](AseLexer& lexer) { lexer.next(), lexer.next(); }),
              "a.ase: line 1, column 4: there is no open block that this brace could close");
    EXPECT_EQ(
        refusal("*A 1", [](AseLexer& lexer) { lexer.next(), lexer.enter("A"); }),
        "a.ase: line 1, column 4: there is \"1\" where the block of *A, which begins with \"{\" is expected");
}

TEST(AseLexer, MessagesShowTheBeginningOfLongAndStrangeWords) {
    EXPECT_EQ(
        refusal(std::string(100, 'x'), [](AseLexer& lexer) { lexer.number(); }),
        "a.ase: line 1, column 1: there is \"" + std::string(40, 'x') + "...\" where a number is expected");
    EXPECT_EQ(
        refusal(std::string(39, 'x') + "\xC3\xBC y", [](AseLexer& lexer) { lexer.number(); }),
        "a.ase: line 1, column 1: there is \"" + std::string(39, 'x') + "...\" where a number is expected");
    EXPECT_EQ(refusal("\x01\xFF", [](AseLexer& lexer) { lexer.number(); }),
              "a.ase: line 1, column 1: there is \"\\x01\xEF\xBF\xBD\" where a number is expected");
}

}  // namespace
}  // namespace velinor
