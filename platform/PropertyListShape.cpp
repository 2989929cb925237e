// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/PropertyListShape.h"

#include <optional>

namespace platform {

namespace {

// An archive of settings is about one kilobyte, forty objects and four levels.
constexpr qsizetype mostBytes = 16384;
constexpr int mostObjects = 1000;
constexpr int mostLevels = 16;

constexpr QByteArrayView magic = "bplist00";
constexpr qsizetype trailerSize = 32;

// The high half of an object's first byte.
enum Marker : quint8 { Integer = 0x1, Array = 0xA, OrderedSet = 0xB, Set = 0xC, Dictionary = 0xD };

class BinaryShape {
public:
    explicit BinaryShape(QByteArrayView data)
        : m_data(data)
    {
    }

    bool isBounded()
    {
        const qsizetype trailer = m_data.size() - trailerSize;
        if (trailer < magic.size())
            return false;
        m_offsetSize = quint8(m_data[trailer + 6]);
        m_referenceSize = quint8(m_data[trailer + 7]);
        const auto top = number(trailer + 16, 8);
        m_offsetTable = number(trailer + 24, 8).value_or(0);
        return top && isObjectBounded(*top, 1);
    }

private:
    // A big-endian number of `size` bytes; nothing when it does not lie within the data.
    std::optional<quint64> number(quint64 position, quint64 size) const
    {
        const auto end = quint64(m_data.size());
        if (size < 1 || size > 8 || position > end || end - position < size)
            return {};
        quint64 value = 0;
        for (quint64 i = position; i < position + size; ++i)
            value = value << 8 | quint8(m_data[qsizetype(i)]);
        return value;
    }

    bool isObjectBounded(quint64 reference, int level)
    {
        if (++m_objects > mostObjects || level > mostLevels || reference > quint64(mostBytes)
            || m_offsetTable > quint64(mostBytes))
            return false;
        const auto position = number(m_offsetTable + reference * m_offsetSize, m_offsetSize);
        const auto first = position ? number(*position, 1) : std::nullopt;
        if (!first)
            return false;
        switch (*first >> 4) {
        case Array:
        case OrderedSet:
        case Set:
            return areMembersBounded(*position, 1, level);
        case Dictionary:
            return areMembersBounded(*position, 2, level);
        default:
            return true;
        }
    }

    // `referencesPerMember`: a dictionary lists its keys, and then its values.
    bool areMembersBounded(quint64 position, quint64 referencesPerMember, int level)
    {
        quint64 count = quint8(m_data[qsizetype(position)]) & 0xF;
        quint64 references = position + 1;
        // A count that does not fit into the marker follows it as an integer object.
        if (count == 0xF) {
            const auto marker = number(references, 1);
            if (!marker || *marker >> 4 != Integer)
                return false;
            const quint64 size = quint64(1) << (*marker & 0xF);
            const auto longCount = number(references + 1, size);
            if (!longCount || *longCount > quint64(mostObjects))
                return false;
            count = *longCount;
            references += 1 + size;
        }
        for (quint64 i = 0; i < count * referencesPerMember; ++i) {
            const auto reference = number(references + i * m_referenceSize, m_referenceSize);
            if (!reference || !isObjectBounded(*reference, level + 1))
                return false;
        }
        return true;
    }

    QByteArrayView m_data;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_offsetTable = 0;
    int m_objects = 0;
};

} // namespace

bool isBinaryPropertyList(QByteArrayView data)
{
    return data.startsWith(magic);
}

bool isPropertyListOfBoundedShape(QByteArrayView data)
{
    return data.size() <= mostBytes && (!isBinaryPropertyList(data) || BinaryShape(data).isBounded());
}

} // namespace platform
