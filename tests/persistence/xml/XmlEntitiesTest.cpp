#include "persistence/xml/XmlEntities.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace tessera {
namespace {

std::string resolved(std::string text, FXmlEntityColumn column = FXmlEntityColumn::ansi, bool* high = nullptr) {
    text.resize(resolveXmlEntities(text.data(), text.size(), column, high));
    return text;
}

// The upper half of ISO 8859-1 by the names that the standard sets give its characters, from 0xA0 on.
constexpr const char* kLatin1Names[] = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",   "ordf",
    "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",   "acute",  "micro",
    "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave",
    "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",
    "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute",
    "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave",
    "iacute", "icirc",  "iuml",   "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide",
    "oslash", "ugrave", "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

const std::map<std::string, char> kAsciiNames = {
    {"quot", '"'},  {"amp", '&'},    {"lt", '<'},     {"gt", '>'},    {"bsol", '\\'}, {"apos", '\''},  {"excl", '!'},
    {"num", '#'},   {"dollar", '$'}, {"percnt", '%'}, {"lpar", '('},  {"rpar", ')'},  {"ast", '*'},    {"plus", '+'},
    {"comma", ','}, {"hyphen", '-'}, {"period", '.'}, {"sol", '/'},   {"colon", ':'}, {"semi", ';'},   {"equals", '='},
    {"quest", '?'}, {"commat", '@'}, {"lsqb", '['},   {"rsqb", ']'},  {"circ", '^'},  {"horbar", '_'}, {"grave", '`'},
    {"lcub", '{'},  {"verbar", '|'}, {"rcub", '}'},   {"tilde", '~'}, {"nl", '\n'},   {"cr", '\r'}};

// The names in the order in which the table has them.
constexpr std::string_view kNames =
    "quot amp lt gt bsol apos excl num dollar percnt lpar rpar ast plus comma hyphen period sol colon semi equals "
    "quest "
    "commat lsqb rsqb circ horbar grave lcub verbar rcub tilde nl cr nbsp iexcl cent pound curren yen brvbar sect uml "
    "copy ordf laquo not reg macr deg plusmn sup2 sup3 acute micro para middot cedil sup1 ordm raquo frac14 frac12 "
    "half "
    "frac34 iquest iquest Agrave Aacute Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc "
    "Iuml ETH Ntilde Ograve Oacute Ocirc Otilde Ouml times Oslash Ugrave Uacute Ucirc Uuml Yacute THORN szlig agrave "
    "aacute acirc atilde auml aring aelig ccedil egrave eacute ecirc euml igrave iacute icirc iuml eth ntilde ograve "
    "oacute ocirc otilde ouml divide oslash ugrave uacute ucirc uuml yacute thorn yuml ";

TEST(XmlEntities, TheTableHasItsRowsInTheirOrder) {
    std::string names;
    for (const FXmlEntity& row : xmlEntities()) {
        names += row.name;
        names += " ";
    }
    EXPECT_EQ(xmlEntities().size(), 130u);
    EXPECT_EQ(names, kNames);
}

TEST(XmlEntities, NamesOfLettersAndSignsHaveTheirCodesOfIso8859Part1) {
    int compared = 0;
    for (const FXmlEntity& row : xmlEntities()) {
        SCOPED_TRACE(row.name);
        const auto* const found =
            std::find(std::begin(kLatin1Names), std::end(kLatin1Names), std::string_view(row.name));
        if (found != std::end(kLatin1Names)) {
            EXPECT_EQ(row.ansi, 0xA0 + (found - std::begin(kLatin1Names)));
            ++compared;
        } else if (std::string_view(row.name) == "half") {
            EXPECT_EQ(row.ansi, 0xBD);
            ++compared;
        } else {
            ASSERT_TRUE(kAsciiNames.contains(row.name));
            EXPECT_EQ(row.ansi, static_cast<std::uint8_t>(kAsciiNames.at(row.name)));
            ++compared;
        }
    }
    EXPECT_EQ(compared, 130);
}

TEST(XmlEntities, TwoNamesOfIso8859Part1AreMissing) {
    EXPECT_EQ(resolved("&shy;&Acirc;&acirc;"), "&shy;&Acirc;\xE2");
}

TEST(XmlEntities, OnlyTheseAreWrittenByName) {
    std::map<std::uint8_t, std::string> written;
    for (int byte = 0; byte < 256; ++byte) {
        if (const char* name = writableXmlEntity(static_cast<std::uint8_t>(byte))) {
            written[static_cast<std::uint8_t>(byte)] = name;
        }
    }
    const std::map<std::uint8_t, std::string> expected = {{'"', "quot"},   {'&', "amp"},  {'<', "lt"},    {'>', "gt"},
                                                          {'$', "dollar"}, {'^', "circ"}, {'`', "grave"}, {'\n', "nl"},
                                                          {'\r', "cr"},    {0xA0, "nbsp"}};
    EXPECT_EQ(written, expected);
}

TEST(XmlEntities, TheSecondColumnIsAMacRomanOne) {
    const struct {
        const char* entity;
        std::uint8_t code;
    } rows[] = {{"&amp;", '&'},     {"&auml;", 0x8A},   {"&Auml;", 0x80}, {"&szlig;", 0xA7},
                {"&eacute;", 0x8E}, {"&nbsp;", 0xCA},   {"&yen;", 0xB4},  {"&divide;", 0xD6},
                {"&yuml;", 0xD8},   {"&frac12;", 0xFF}, {"&ETH;", 0xFF},  {"&times;", 0xFF}};
    for (const auto& row : rows) {
        EXPECT_EQ(resolved(row.entity, FXmlEntityColumn::second), std::string(1, static_cast<char>(row.code)))
            << row.entity;
    }
}

TEST(XmlEntities, TheSecondColumnHasEachCharacterOnce) {
    std::set<std::uint8_t> codes;
    int known = 0;
    for (const FXmlEntity& row : xmlEntities()) {
        EXPECT_EQ(row.second == row.ansi, row.ansi < 0x80 || row.second == 0xA2 || row.second == 0xA3 ||
                                              row.second == 0xA9 || row.second == 0xB1 || row.second == 0xB5)
            << row.name;
        if (row.second != 0xFF) {
            ++known;
            codes.insert(row.second);
        }
    }
    // "iquest" stands twice.
    EXPECT_EQ(static_cast<int>(codes.size()), known - 1);
}

TEST(XmlEntities, ANumberGivesItsLowByte) {
    EXPECT_EQ(resolved("&#233;"), "\xE9");
    EXPECT_EQ(resolved("&#xe9;&#xE9;"), "\xE9\xE9");
    EXPECT_EQ(resolved("&#8364;"), "\xAC");
    EXPECT_EQ(resolved("&#x20AC;"), "\xAC");
    EXPECT_EQ(resolved("&#4294967361;"), "A");
}

TEST(XmlEntities, NumbersAreScannedAsPrintfsCompanionScansThem) {
    EXPECT_EQ(resolved("&# 65;&#+65;&#-191;&#65tail;&#x0x41;"), "AAAAA");
    EXPECT_EQ(resolved("&#;&#x;&#tail;"), "&#;&#x;&#tail;");
}

TEST(XmlEntities, WhatIsUnknownOrGivesNoByteStaysAsWritten) {
    for (const char* text : {"&unknown;", "&AMP;", "&;", "&", "&amp", "&#0;", "&#256;", "&#x100;", "& amp;",
                             "&toolong8;", "&amp &", "a;b"}) {
        EXPECT_EQ(resolved(text), text);
    }
}

TEST(XmlEntities, ResolvedTextClosesUp) {
    EXPECT_EQ(resolved("a&lt;b&amp;c&unknown;d&gt;"), "a<b&c&unknown;d>");
    EXPECT_EQ(resolved("&amp;lt;"), "&lt;") << "what was resolved isn't looked at again";
    EXPECT_EQ(resolved("&x&amp;"), "&x&");
    EXPECT_EQ(resolved(""), "");
}

TEST(XmlEntities, AHighByteIsTold) {
    bool high = false;
    resolved("\xC3\xA9&amp;&#127;", FXmlEntityColumn::ansi, &high);
    EXPECT_FALSE(high) << "bytes that stood there don't count";
    resolved("&eacute;", FXmlEntityColumn::ansi, &high);
    EXPECT_TRUE(high);
}

TEST(XmlEntities, AmpersandsAloneTakeTimeInProportion) {
    const std::string many(4 << 20, '&');
    EXPECT_EQ(resolved(many), many);
}

} // namespace
} // namespace tessera
