// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"

#include <QHash>
#include <QSet>
#include <QStringList>

// The sound system's sources as the user knows them: in the order of the menu, each under a name of its own.
// Main thread only.
class InputDevices {
public:
    // True when other names are there than before; their order, which a new default input changes, does not
    // count.
    bool update(const sound::DeviceList &list);

    const QStringList &names() const { return m_names; }
    // 0 for an unknown name.
    std::uint32_t identifierFromName(const QString &name) const;
    // The sources that are there and muted, by key.
    const QSet<QString> &mutedKeys() const { return m_mutedKeys; }

    // Identifiers are given out once a source and stay its own until the process ends, also while it is
    // unplugged. 0 belongs to no source, and has no key.
    static std::uint32_t identifierFromKey(const QString &key);
    static QString keyFromIdentifier(std::uint32_t identifier);

private:
    QStringList m_names;
    QHash<QString, sound::Source> m_sources; // by the name that the user sees
    QSet<QString> m_mutedKeys;
};
