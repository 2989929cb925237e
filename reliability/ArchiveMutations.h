// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <random>

// Damaged archives, the same ones for the same seed everywhere.
class ArchiveMutations {
public:
    ArchiveMutations(const QList<QByteArray> &originals, quint64 seed)
        : m_originals(originals)
        , m_random(seed)
    {
    }

    // One to four damages on one of the originals.
    QByteArray next()
    {
        QByteArray data = m_originals[below(m_originals.size())];
        for (qsizetype damages = 1 + below(4); damages > 0; --damages)
            damage(data);
        return data;
    }

private:
    // Not std::uniform_int_distribution, whose numbers differ between standard libraries.
    qsizetype below(qsizetype limit) { return limit > 0 ? qsizetype(m_random() % quint64(limit)) : 0; }

    void damage(QByteArray &data)
    {
        static constexpr quint8 interesting[] = {0x00, 0x01, 0x0F, 0x10, 0x13, 0x14, 0x1F, 0x23, 0x4F, 0x5F,
            0x6F, 0x80, 0x87, 0xA1, 0xAF, 0xC1, 0xD1, 0xDF, 0x7F, 0xFF};
        const qsizetype at = below(data.size());
        const QByteArray byte(1, char(interesting[below(std::size(interesting))]));
        // Most leave the length, because another one is noticed early.
        switch (below(16)) {
        case 0:
            data.truncate(at);
            break;
        case 1:
            data.insert(at, data.mid(below(data.size()), 1 + below(64)));
            break;
        case 2:
            data.remove(at, 1 + below(16));
            break;
        case 3:
            // The trailer of a binary archive says where everything else is.
            data.replace(qMax<qsizetype>(0, data.size() - 1 - below(32)), 1, byte);
            break;
        default:
            data.replace(at, 1, byte);
        }
    }

    QList<QByteArray> m_originals;
    std::mt19937_64 m_random;
};
