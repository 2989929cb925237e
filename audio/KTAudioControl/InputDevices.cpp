// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/InputDevices.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

QStringList &knownKeys()
{
    static QStringList keys; // a key's identifier is its position, from 1
    return keys;
}

// The default input, other inputs, what outputs play; each by name, and by key where names are equal.
QList<sound::Source> inMenuOrder(const sound::DeviceList &list)
{
    const auto rank = [&](const sound::Source &source) {
        const int group = source.key == list.defaultKey ? 0 : source.monitor ? 2 : 1;
        return std::tuple(group, source.name.toCaseFolded(), source.name, source.key);
    };
    QList<sound::Source> sources = list.sources;
    std::sort(
        sources.begin(), sources.end(), [&](const auto &a, const auto &b) { return rank(a) < rank(b); });
    return sources;
}

QString unusedName(const QString &name, const QHash<QString, sound::Source> &used)
{
    QString candidate = name;
    for (int number = 2; used.contains(candidate); ++number)
        candidate = u"%1 (%2)"_s.arg(name).arg(number);
    return candidate;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

} // namespace

// A source that stays keeps its name, so that a device of the same name which comes or goes beside it, or
// becomes the default, never makes the name that the user has chosen mean another one.
bool InputDevices::update(const sound::DeviceList &list)
{
    const QList<sound::Source> sources = inMenuOrder(list);
    QHash<QString, QString> nameOfKey;
    QHash<QString, sound::Source> named;
    for (auto known = m_sources.cbegin(); known != m_sources.cend(); ++known) {
        const bool stays = std::any_of(sources.begin(), sources.end(),
            [&](const auto &source) { return source.key == known->key && source.name == known->name; });
        if (!stays)
            continue;
        nameOfKey.insert(known->key, known.key());
        named.insert(known.key(), *known);
    }
    QStringList names;
    for (const sound::Source &source : sources) {
        if (!nameOfKey.contains(source.key)) {
            nameOfKey.insert(source.key, unusedName(source.name, named));
            named.insert(nameOfKey.value(source.key), source);
        }
        names.append(nameOfKey.value(source.key));
    }
    const bool changed = sorted(names) != sorted(m_names);
    m_names = names;
    m_sources = named;
    m_mutedKeys.clear();
    for (const sound::Source &source : sources)
        if (source.muted)
            m_mutedKeys.insert(source.key);
    return changed;
}

std::uint32_t InputDevices::identifierFromName(const QString &name) const
{
    const auto source = m_sources.constFind(name);
    return source == m_sources.cend() ? 0 : identifierFromKey(source->key);
}

std::uint32_t InputDevices::identifierFromKey(const QString &key)
{
    if (!knownKeys().contains(key))
        knownKeys().append(key);
    return std::uint32_t(knownKeys().indexOf(key) + 1);
}

QString InputDevices::keyFromIdentifier(std::uint32_t identifier)
{
    return knownKeys().value(qsizetype(identifier) - 1);
}
