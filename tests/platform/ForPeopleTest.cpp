// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/ForPeople.h"
#include "tests/support/TestLanguages.h"

using namespace Qt::StringLiterals;

namespace {

TEST(ForPeople, AReasonIsPutIntoWordsWithWhatALibrarySaysAboutIt)
{
    const testbed::Speaking german(u"flipside_de"_s);
    for (const auto &[reason, words] : {std::pair{"the disk is full", u"der Datenträger ist voll"_s},
             {"there is no sound server: Timeout", u"kein Soundserver: Zeitüberschreitung"_s},
             {"there is no sound server: Too: odd", u"kein Soundserver: Too: odd"_s},
             {"not known: at all", u"not known: at all"_s}, {"", u""_s}})
        EXPECT_EQ(platform::inWords(QString::fromUtf8(reason)), words);
}

TEST(ForPeople, NumbersHaveTheDigitsOfTheClock)
{
    const QLocale before;
    for (const auto &[locale, number] :
        {std::pair{u"de_DE"_s, u"1,5"_s}, {u"ar_EG"_s, u"1.5"_s}, {u"C"_s, u"1.5"_s}}) {
        QLocale::setDefault(QLocale(locale));
        EXPECT_EQ(platform::localeOfNumbers().toString(1.5, 'f', 1), number);
    }
    QLocale::setDefault(before);
}

} // namespace
