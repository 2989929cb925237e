// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/ForPeople.h"

#include <cstring>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString translated(const QString &english)
{
    return QCoreApplication::translate("Reason", english.toUtf8().constData());
}

} // namespace

QString reason(const char *words)
{
    return QString::fromUtf8(words);
}

QString reason(const char *words, const QString &detail)
{
    return QString::fromUtf8(words).arg(detail);
}

QString inWords(const QString &reason)
{
    QString whole = reason.isEmpty() ? reason : translated(reason);
    const qsizetype colon = reason.indexOf(": "_L1);
    if (whole != reason || colon < 0)
        return whole;
    return translated(reason.left(colon) + u": %1"_s).arg(translated(reason.mid(colon + 2)));
}

QLocale localeOfNumbers()
{
    const QLocale locale;
    const bool isWrittenLikeTheClock = locale.language() != QLocale::C && locale.zeroDigit() == "0"_L1;
    return isWrittenLikeTheClock ? locale : QLocale(QLocale::English, QLocale::UnitedStates);
}

EnglishMessages::EnglishMessages()
    : m_english(newlocale(LC_MESSAGES_MASK, "C", duplocale(uselocale(nullptr))))
    , m_before(m_english ? uselocale(m_english) : nullptr)
{
}

EnglishMessages::~EnglishMessages()
{
    if (!m_english)
        return;
    uselocale(m_before);
    freelocale(m_english);
}

QString systemError(int error)
{
    const EnglishMessages english;
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace platform
