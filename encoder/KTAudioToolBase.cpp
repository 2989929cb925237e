// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTAudioToolBase.h"

#include "platform/Logging.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace {

constexpr quint32 firstBeyondBasicPlane = 0x10000;
constexpr int mostContinuations = 5;

// UTF-8 a byte at a time.
class Decoder {
public:
    enum Result { Pending, Complete, Invalid };

    Result take(quint8 byte)
    {
        if (m_pending > 0) {
            m_code = m_code * 64 + (byte & 0x3F);
            return --m_pending > 0 ? Pending : Complete;
        }
        // The number of leading ones: none is ASCII, one a stray continuation, otherwise the whole sequence.
        const int ones = std::countl_one(byte);
        if (ones == 1 || ones > mostContinuations + 1)
            return Invalid;
        m_code = byte & (0xFF >> (ones + 1));
        m_pending = std::max(0, ones - 1);
        m_multiByte = ones > 0;
        return m_pending > 0 ? Pending : Complete;
    }

    bool isPending() const { return m_pending > 0; }
    bool isMultiByte() const { return m_multiByte; }
    quint32 code() const { return m_code; }

private:
    int m_pending = 0;
    bool m_multiByte = false;
    quint32 m_code = 0;
};

// The caller's buffer: writes outside it do not happen.
template <typename Unit, typename Count> class Output {
public:
    Output(Unit *units, qint64 capacity)
        : m_units(units)
        , m_capacity(capacity)
    {
        std::fill_n(units, capacity, Unit(0));
    }

    void store(Count index, quint32 code)
    {
        if (qint64(index) < m_capacity)
            m_units[index] = Unit(code);
    }
    // False when that was the last unit.
    bool append(quint32 code)
    {
        store(m_count++, code);
        if (!isFull())
            return true;
        qCWarning(lcEncoder, "Out string buffer too small.");
        return false;
    }
    void endInsideSequence()
    {
        store(m_count++, u'?');
        qCWarning(lcEncoder, "unknown UTF-8 character\n");
    }
    bool isFull() const { return qint64(m_count) >= m_capacity; }
    Count count() const { return m_count; }

private:
    Unit *m_units;
    qint64 m_capacity;
    Count m_count = 0;
};

enum class BeyondBasicPlane { Cut, Refuse };

template <BeyondBasicPlane beyond, typename Unit, typename Count>
void decode(QByteArrayView utf8, Output<Unit, Count> &output)
{
    Decoder decoder;
    for (const char byte : utf8) {
        const Decoder::Result result = decoder.take(quint8(byte));
        if (result == Decoder::Pending)
            continue;
        if (result == Decoder::Invalid) {
            qCWarning(lcEncoder, "unknown UTF-8 character");
            return;
        }
        if (beyond == BeyondBasicPlane::Refuse && decoder.isMultiByte()
            && decoder.code() >= firstBeyondBasicPlane) {
            qCWarning(lcEncoder, "Error utf-8 char: %u", decoder.code());
            return;
        }
        if (!output.append(decoder.code()))
            return;
    }
    if (decoder.isPending())
        output.endInsideSequence();
}

} // namespace

char16_t *KTAudioToolBase::NSStringToUTF16(const QString &string, char16_t *outString, qint64 maxOutString)
{
    return NSStringToUTF16(QByteArrayView(string.toUtf8()), outString, maxOutString);
}

char16_t *KTAudioToolBase::NSStringToUTF16(QByteArrayView utf8, char16_t *outString, qint64 maxOutString)
{
    if (!outString || maxOutString < 0)
        return outString;
    Output<char16_t, quint16> output(outString, maxOutString);
    // Each unit takes a byte at least, so that the 16-bit count cannot wrap.
    decode<BeyondBasicPlane::Cut>(utf8.first(std::min<qsizetype>(utf8.size(), 0xFFFF)), output);
    if (!output.isFull())
        output.store(output.count(), 0);
    else if (output.count() > 0)
        output.store(quint16(output.count() - 1), 0);
    return outString;
}

wchar_t *KTAudioToolBase::NSStringToWchar_t(const QString &string, wchar_t *outString, qint64 maxOutString)
{
    return NSStringToWchar_t(QByteArrayView(string.toUtf8()), outString, maxOutString);
}

wchar_t *KTAudioToolBase::NSStringToWchar_t(QByteArrayView utf8, wchar_t *outString, qint64 maxOutString)
{
    if (!outString || maxOutString < 0)
        return outString;
    Output<wchar_t, quint32> output(outString, maxOutString);
    decode<BeyondBasicPlane::Refuse>(utf8, output);
    // With nothing stored this wraps to the last index there is, which no buffer has.
    output.store(output.count() - 1, 0);
    return outString;
}
