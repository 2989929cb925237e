// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/XSettings.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/X11.h"

namespace platform {

namespace {

constexpr quint32 longestProperty = 1U << 18; // in units of four bytes

QByteArray managersProperty(xcb_connection_t *server)
{
    const xcb_atom_t selection = x11Atom(server, "_XSETTINGS_S0");
    const X11Reply<xcb_get_selection_owner_reply_t> manager(
        xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, selection), nullptr));
    if (!manager || manager->owner == XCB_WINDOW_NONE)
        return {};
    const xcb_atom_t settings = x11Atom(server, "_XSETTINGS_SETTINGS");
    const auto question
        = xcb_get_property(server, 0, manager->owner, settings, XCB_ATOM_ANY, 0, longestProperty);
    const X11Reply<xcb_get_property_reply_t> property(xcb_get_property_reply(server, question, nullptr));
    if (!property)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(property.get())),
        xcb_get_property_value_length(property.get())};
}

// Reads one after another; what lies behind the end is zero, and ends the reading.
class Reader {
public:
    explicit Reader(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_isBigEndian(!bytes.isEmpty() && bytes[0] == 1)
    {
    }

    bool isAtEnd() const { return m_at >= m_bytes.size(); }
    void skip(qsizetype count) { m_at += count; }
    quint8 byte() { return isAtEnd() ? 0 : quint8(m_bytes[m_at++]); }
    quint32 number(int size)
    {
        quint32 value = 0;
        for (int i = 0; i < size; ++i)
            value |= quint32(byte()) << (8 * (m_isBigEndian ? size - 1 - i : i));
        return value;
    }
    // Padded to four bytes.
    QByteArray text(quint32 length)
    {
        QByteArray text = m_bytes.mid(m_at, length);
        m_at += (qsizetype(length) + 3) & ~qsizetype(3);
        return text;
    }

private:
    const QByteArray &m_bytes;
    const bool m_isBigEndian;
    qsizetype m_at = 0;
};

enum Type : quint8 { Integer = 0, Text = 1, Colour = 2 };

} // namespace

QByteArray xSettingIn(const QByteArray &property, const QByteArray &name)
{
    Reader reader(property);
    reader.skip(8); // byte order and serial number of the property
    for (quint32 left = reader.number(4); left > 0 && !reader.isAtEnd(); --left) {
        const auto type = Type(reader.byte());
        reader.skip(1);
        const QByteArray its = reader.text(reader.number(2));
        reader.skip(4); // serial number of the setting
        if (type == Text) {
            QByteArray value = reader.text(reader.number(4));
            if (its == name)
                return value;
        } else {
            reader.skip(type == Colour ? 8 : 4);
        }
    }
    return {};
}

QByteArray xSetting(const char *name)
{
    assertMainThread();
    xcb_connection_t *server = x11Connection();
    return server ? xSettingIn(managersProperty(server), name) : QByteArray();
}

} // namespace platform
