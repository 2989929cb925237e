// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

namespace platform {

// Keyed archives of one object whose values are plain numbers: a property list with the keys $archiver,
// $version, $top and $objects, in which objects refer to each other by their index in $objects. A value keeps
// its type: whole numbers, floating-point numbers and booleans are told apart.

struct PropertyListDeleter {
    void operator()(void *node) const;
};
using PropertyList = std::unique_ptr<void, PropertyListDeleter>;

// Values are written in the order in which they are encoded. A key may be encoded once.
class KeyedEncoder {
public:
    KeyedEncoder();

    void encodeInt(const char *key, qint32 value);
    void encodeInteger(const char *key, qint64 value);
    void encodeDouble(const char *key, double value);
    void encodeBool(const char *key, bool value);

    // The archive of what has been encoded so far, as a binary property list, with an object of this class.
    QByteArray archive(const char *className) const;

private:
    PropertyList m_object;
};

// A value that is missing, of another type or out of range decodes as 0, 0.0 or false.
class KeyedDecoder {
public:
    // Reads the binary and the XML form. Nothing, and one log line, when the data is not an archive whose
    // root is an object of this class, or when it is larger or deeper than any archive of settings. The data
    // may come from anywhere.
    static std::optional<KeyedDecoder> fromArchive(const QByteArray &data, const char *className);

    qint32 decodeInt(const char *key) const;
    qint64 decodeInteger(const char *key) const;
    double decodeDouble(const char *key) const;
    bool decodeBool(const char *key) const;

private:
    KeyedDecoder(PropertyList archive, void *object);

    PropertyList m_archive;
    // Belongs to the archive.
    void *m_object;
};

} // namespace platform
