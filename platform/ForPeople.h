// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <clocale>

// The log and what scripts read are English everywhere; what people see is in their language. A reason goes
// to both, so it is kept in English and put into words where it is shown. Any thread.
namespace platform {

// A reason is a phrase that follows a colon: "the disk is full". Write it with QT_TRANSLATE_NOOP("Reason",
// ...).
QString reason(const char *words);
// "there is no sound server: %1", and what a library says about it.
QString reason(const char *words, const QString &detail);
// In the user's language, as far as it is known there.
QString inWords(const QString &reason);

// How the desktop writes numbers; like the United States where it has nothing but the C locale, or other
// digits than those of the clock and of file names, which stand beside them.
QLocale localeOfNumbers();

// While it lives, the C library and those that use its catalogues say in English what they have to say to
// this thread.
class EnglishMessages {
public:
    EnglishMessages();
    ~EnglishMessages();
    Q_DISABLE_COPY_MOVE(EnglishMessages)

private:
    const locale_t m_english;
    const locale_t m_before;
};

// What the system says about an error number, in English.
QString systemError(int error);

} // namespace platform
