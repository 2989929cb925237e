// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QString>

// Texts for tags: a string into a caller's buffer of fixed capacity, zero-terminated. Any thread.
//
// `maxOutString` counts units, not bytes. Both give back the buffer's pointer whatever happens; a log line
// tells what went wrong, and the buffer holds what was converted until then. A null buffer or a negative
// capacity is left alone, and nothing is ever written outside the buffer. The decoder takes the old forms of
// UTF-8 of five and six bytes, and does not look at the high bits of continuation bytes.
class KTAudioToolBase {
public:
    // Up to capacity - 1 units. Of a character above U+FFFF the low 16 bits are stored. Meant for texts of
    // less than 65536 bytes and buffers of less than 65536 units; bytes beyond that are not looked at.
    static char16_t *NSStringToUTF16(const QString &string, char16_t *outString, qint64 maxOutString);
    static char16_t *NSStringToUTF16(QByteArrayView utf8, char16_t *outString, qint64 maxOutString);

    // The last unit always gives way to the terminator, so that "abc" becomes "ab"; a conversion ends before
    // a character above U+FFFF.
    static wchar_t *NSStringToWchar_t(const QString &string, wchar_t *outString, qint64 maxOutString);
    static wchar_t *NSStringToWchar_t(QByteArrayView utf8, wchar_t *outString, qint64 maxOutString);
};
