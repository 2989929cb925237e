// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTAudioToolBase.h"
#include "tests/support/LogCapture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const QStringList silent;
const QStringList unknown = {u"unknown UTF-8 character"_s};
const QStringList cutOff = {u"unknown UTF-8 character\n"_s};
const QStringList tooSmall = {u"Out string buffer too small."_s};

struct Case {
    QByteArray utf8;
    int capacity;
    std::u32string utf16;
    QStringList utf16Lines;
    std::u32string wide;
    QStringList wideLines;
};

// Converts into the middle of a larger buffer, and gives the capacity's worth of it up to where zeros begin.
template <typename Unit>
std::u32string converted(Unit *(*convert)(QByteArrayView, Unit *, qint64), const Case &test)
{
    constexpr Unit untouched = 0x5555;
    constexpr int around = 4;
    std::vector<Unit> buffer(size_t(test.capacity + 2 * around), untouched);
    EXPECT_EQ(convert(test.utf8, buffer.data() + around, test.capacity), buffer.data() + around);
    EXPECT_EQ(std::count(buffer.begin(), buffer.begin() + around, untouched), around);
    EXPECT_EQ(std::count(buffer.end() - around, buffer.end(), untouched), around);
    std::u32string units(buffer.begin() + around, buffer.end() - around);
    return units.substr(0, units.find_last_not_of(U'\0') + 1);
}

class KTAudioToolBaseTest : public testing::TestWithParam<Case> { };

TEST_P(KTAudioToolBaseTest, ConvertsWithinTheBuffer)
{
    testbed::LogCapture log;
    EXPECT_EQ(converted<char16_t>(KTAudioToolBase::NSStringToUTF16, GetParam()), GetParam().utf16);
    EXPECT_EQ(log.lines(), GetParam().utf16Lines);
    log.clear();
    EXPECT_EQ(converted<wchar_t>(KTAudioToolBase::NSStringToWchar_t, GetParam()), GetParam().wide);
    EXPECT_EQ(log.lines(), GetParam().wideLines);
}

INSTANTIATE_TEST_SUITE_P(Texts, KTAudioToolBaseTest,
    testing::Values(Case{"h\u00e9llo", 10, U"h\u00e9llo", silent, U"h\u00e9ll", silent},
        Case{"abcd", 3, U"ab", tooSmall, U"ab", tooSmall}, Case{"abc", 10, U"abc", silent, U"ab", silent},
        Case{"", 4, U"", silent, U"", silent}, Case{"", 0, U"", silent, U"", silent},
        Case{"ab", 0, U"", tooSmall, U"", tooSmall}, Case{"a", 1, U"", tooSmall, U"", tooSmall},
        Case{"a\U0001F600", 10, U"a\uF600", silent, U"", {u"Error utf-8 char: 128512"_s}},
        Case{"\U0001F600", 2, U"\uF600", silent, U"", {u"Error utf-8 char: 128512"_s}},
        Case{"ab\x80\x63", 10, U"ab", unknown, U"a", unknown}, Case{"\xFE", 3, U"", unknown, U"", unknown},
        Case{"ab\xE2\x82", 10, U"ab?", cutOff, U"ab", cutOff}, Case{"a\xC3", 2, U"a", cutOff, U"a", cutOff},
        Case{"\xC3", 0, U"", cutOff, U"", cutOff},
        // Overlong forms, unchecked continuations, and the old forms of five and six bytes.
        Case{"\xC1\xA1\x62", 4, U"ab", silent, U"a", silent},
        Case{"\xC3(x", 4, U"\u00E8x", silent, U"\u00E8", silent},
        Case{"\xF8\x80\x80\x81\x81\x62", 4, U"Ab", silent, U"A", silent},
        Case{"\xFC\x80\x80\x80\x81\x82\x62", 4, U"Bb", silent, U"B", silent},
        Case{"\xFD\xBF\xBF\xBF\xBF\xBF", 4, U"\uFFFF", silent, U"", {u"Error utf-8 char: 2147483647"_s}}));

TEST(KTAudioToolBaseTest, LeavesANullBufferAndANegativeCapacityAlone)
{
    char16_t unit = 7;
    wchar_t wide = 7;
    EXPECT_EQ(KTAudioToolBase::NSStringToUTF16(u"abc"_s, nullptr, 4), nullptr);
    EXPECT_EQ(KTAudioToolBase::NSStringToWchar_t(u"abc"_s, nullptr, 4), nullptr);
    EXPECT_EQ(*KTAudioToolBase::NSStringToUTF16(u"abc"_s, &unit, -1), 7);
    EXPECT_EQ(*KTAudioToolBase::NSStringToWchar_t(u"abc"_s, &wide, -1), 7);
}

TEST(KTAudioToolBaseTest, EndsWithTextsThatAreLongerThanItIsMadeFor)
{
    std::vector<char16_t> units(70000, u'x');
    KTAudioToolBase::NSStringToUTF16(QString(66000, u'a'), units.data(), qint64(units.size()));
    EXPECT_EQ(std::u16string_view(units.data()).size(), 65535U);
}

} // namespace
