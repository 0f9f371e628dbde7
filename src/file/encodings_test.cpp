#include "file/encodings.h"

#include "file/simpleDecoder_test.h"
#include "platform/base/codepages.h"
#include "platform/base/testhooks.h"
#include "support/PlatformVersion.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {

const struct {
    Bytes bytes;
    Text file;
    Text second;
} kDecoded[] = {
    {{}, u"", u""},
    {{0x41, 0x00, 0x7F}, {u'A', u'\0', u'\x7F'}, {u'A', u'\0', u'\x7F'}},
    {{0x80, 0xBF, 0xC1}, u"\u0080\u00BF\u00C1", u"\u0080\u00BF\u00C1"},
    {{0xC0, 0x80}, u"\u00C0\u0080", u"\u00C0\u0080"},
    {{0xC2, 0x80, 0xDF, 0xBF}, u"\u0080\u07FF", u"\u0080\u07FF"},
    {{0xC3, 0x41}, u"\u00C1", u"\u00C1"},  // any byte continues
    {{0xE2, 0x82, 0xAC}, u"\u20AC", u"\u20AC"},
    {{0xE0, 0x80, 0x80}, Text(1, u'\0'), Text(1, u'\0')},
    {{0xED, 0xA0, 0x80, 0xED, 0xB0, 0x80}, u"\xD800\xDC00", u"\xD800\xDC00"},
    {{0xF0, 0x9F, 0x98, 0x80}, u"\u07D8\u0080", u"\U0001F600"},
    {{0xF0, 0x80, 0x80, 0x80}, {0, 0x80}, Text(1, u'\0')},
    {{0xF4, 0x8F, 0xBF, 0xBF}, u"\u43FF\u00BF", u"\U0010FFFF"},
    {{0xF4, 0x90, 0x80, 0x80}, u"\u4400\u0080", u"\uFFFD"},
    {{0xF5, 0x41, 0x42}, u"\u5042", u"\u00F5AB"},
    {{0xFF, 0xBF, 0xBF}, u"\uFFFF", u"\u00FF\u00BF\u00BF"},
    // Cut short, a sequence ends the text.
    {{0xE2, 0x82}, u"", u""},
    {{0x41, 0xE2, 0x82}, u"A", u"A"},
    {{0x41, 0xC3}, u"A", u"A"},
    {{0x41, 0xF0, 0x9F, 0x98}, u"A\u07D8", u"A"},
    {{0xFF, 0x41}, u"", u"\u00FFA"},
};

// Bytes as files have them, in runs of one kind, with some of any value between.
Bytes randomBytes(std::mt19937& random, std::size_t count) {
    Bytes bytes;
    while (bytes.size() < count) {
        const auto kind = random() % 5;
        for (auto left = random() % 40; left > 0; --left) {
            const auto any = static_cast<std::uint8_t>(random());
            const auto follow = static_cast<std::uint8_t>(0x80 | (any & 0x3F));
            if (kind == 0) bytes.push_back(any);
            if (kind == 1) bytes.insert(bytes.end(), {0xE4, follow, follow});
            if (kind == 2) bytes.insert(bytes.end(), {0xD0, follow});
            if (kind >= 3) bytes.push_back(any & 0x7F);
        }
    }
    bytes.resize(count);
    return bytes;
}

// The decoder on memory that the bytes share with the text.
Text decodedInPlace(const Bytes& bytes) {
    Text s(bytes.size(), u'\0');
    auto* const half = reinterpret_cast<std::uint8_t*>(s.data()) + bytes.size();
    std::copy(bytes.begin(), bytes.end(), half);
    s.resize(decodeUTF8(half, bytes.size(), s.data()));
    return s;
}

}  // namespace

TEST(encodings, DecodersTakeAnyBytesByTheirLeadBytes) {
    for (const auto& c : kDecoded) {
        const auto shown = ::testing::PrintToString(c.bytes);
        EXPECT_EQ(ufu_UTF8ToString(c.bytes), c.file) << shown;
        EXPECT_EQ(UTF8ToStringEx(c.bytes), c.second) << shown;
    }
}

TEST(encodings, DecodersAgreeWithTheSimpleOnes) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const Bytes bytes = randomBytes(random, random() % 200);
        const auto shown = ::testing::PrintToString(bytes);
        ASSERT_EQ(ufu_UTF8ToString(bytes), test::simpleDecoded(bytes, false)) << shown;
        ASSERT_EQ(decodedInPlace(bytes), test::simpleDecoded(bytes, false)) << shown;
        ASSERT_EQ(UTF8ToStringEx(bytes), test::simpleDecoded(bytes, true)) << shown;
    }
}

TEST(encodings, EveryUnitComesBackFromBothForms) {
    Text all;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        all += static_cast<char16_t>(unit);
        ASSERT_EQ(ufu_CharToUTF8(all.back()), test::simpleEncoded({&all.back(), 1}));
    }
    for (std::size_t start = 0; start < 40; ++start) {  // against every border of the fast road
        const TextView s = TextView(all).substr(100 + start);
        ASSERT_EQ(ufu_StringToUTF8(s), test::simpleEncoded(s));
    }
    EXPECT_EQ(ufu_UTF8ToString(ufu_StringToUTF8(all)), all);
    EXPECT_EQ(UTF8ToStringEx(ufu_StringToUTF8(all)), all);
    EXPECT_EQ(UnpackUTF8(PackUTF8(all)), all);
}

TEST(encodings, ThePackedFormIsOneCharacterForEachByte) {
    EXPECT_EQ(PackUTF8(u"a\u20AC"), u"a\u00E2\u201A\u00AC");
    EXPECT_EQ(PackUTF8(u"\u0101"), u"\u00C4\u0081");  // a byte that the code page leaves undefined
    EXPECT_EQ(UnpackUTF8(u"\u00F0\u0178\u02DC\u20AC"), u"\U0001F600");
    EXPECT_EQ(PackUTF8(u""), u"");
    EXPECT_EQ(UnpackUTF8(u""), u"");
}

TEST(encodings, ATextIsAnsiByItsHighBytesOnThe1252PageOnly) {
    const platform::test::HookScope hooks;
    platform::setAnsiCodePage(1252);
    EXPECT_TRUE(IsAnsiText(u""));
    EXPECT_TRUE(IsAnsiText(u"\u00FF\u0080"));
    EXPECT_FALSE(IsAnsiText(u"\u0100"));
    for (const std::size_t at : {0, 1, 4095, 4096, 9999}) {
        Text s(10'000, u'\u00FF');
        s[at] = u'\u0100';
        EXPECT_FALSE(IsAnsiText(s)) << at;
    }
    platform::setAnsiCodePage(1251);
    EXPECT_FALSE(IsAnsiText(u"a"));

    const test::PlatformVersion old({4, 0, platform::VER_PLATFORM_WIN32_NT});
    EXPECT_TRUE(IsAnsiText(u"\u0416"));
}
