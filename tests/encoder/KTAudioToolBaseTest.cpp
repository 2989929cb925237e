// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTAudioToolBase.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

struct Case {
    QByteArray utf8;
    int capacity;
    std::u32string utf16;
    const char *utf16Line;
    std::u32string wide;
    const char *wideLine;
};

const char *const unknown = "unknown UTF-8 character";
const char *const cutOff = "unknown UTF-8 character\n";
const char *const tooSmall = "Out string buffer too small.";

const Case cases[] = {
    {"h\u00e9llo", 10, U"h\u00e9llo", "", U"h\u00e9ll", ""},
    {"abcd", 3, U"ab", tooSmall, U"ab", tooSmall},
    {"", 4, U"", "", U"", ""},
    {"ab", 0, U"", tooSmall, U"", tooSmall},
    {"a\U0001F600", 10, U"a\uF600", "", U"", "Error utf-8 char: 128512"},
    {"ab\x80\x63", 10, U"ab", unknown, U"a", unknown},
    {"\xFE", 3, U"", unknown, U"", unknown},
    {"ab\xE2\x82", 10, U"ab?", cutOff, U"ab", cutOff},
    // An overlong form, an unchecked continuation, and the old form of six bytes.
    {"\xC1\xA1\xC3(x", 4, U"a\u00E8x", "", U"a\u00E8", ""},
    {"\xFD\xBF\xBF\xBF\xBF\xBF", 4, U"\uFFFF", "", U"", "Error utf-8 char: 2147483647"},
};

// Converts into the middle of a larger buffer, and gives the capacity's worth of it up to where zeros begin.
template <typename Unit>
std::u32string converted(Unit *(*convert)(QByteArrayView, Unit *, qint64), const Case &test)
{
    constexpr Unit untouched = 0x5555;
    std::vector<Unit> buffer(size_t(test.capacity + 2), untouched);
    EXPECT_EQ(convert(test.utf8, &buffer[1], test.capacity), &buffer[1]);
    EXPECT_EQ(convert("a", &buffer[0], -1), &buffer[0]);
    EXPECT_EQ(convert("a", nullptr, 4), nullptr);
    EXPECT_EQ(buffer.front(), untouched);
    EXPECT_EQ(buffer.back(), untouched);
    const std::u32string units(buffer.begin() + 1, buffer.end() - 1);
    return units.substr(0, units.find_last_not_of(U'\0') + 1);
}

// A terminator in the wrong place, a character lost or one too many, a write outside the buffer.
TEST(KTAudioToolBase, ConvertsWithinTheBuffer)
{
    testbed::LogCapture log;
    for (const Case &test : cases) {
        SCOPED_TRACE(test.utf8.toHex().toStdString());
        log.clear();
        EXPECT_EQ(converted<char16_t>(KTAudioToolBase::NSStringToUTF16, test), test.utf16);
        EXPECT_EQ(log.lines().join(u'|'), QLatin1StringView(test.utf16Line));
        log.clear();
        EXPECT_EQ(converted<wchar_t>(KTAudioToolBase::NSStringToWchar_t, test), test.wide);
        EXPECT_EQ(log.lines().join(u'|'), QLatin1StringView(test.wideLine));
    }
}

} // namespace
