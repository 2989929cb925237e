// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/XSettings.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/X11.h"

#include <QCoreApplication>

namespace platform {

namespace {

constexpr quint32 longestProperty = 1U << 18; // in units of four bytes

constexpr char managerSelection[] = "_XSETTINGS_S0";
constexpr char settingsProperty[] = "_XSETTINGS_SETTINGS";

xcb_window_t managersWindow(xcb_connection_t *server, xcb_atom_t selection)
{
    const X11Reply<xcb_get_selection_owner_reply_t> manager(
        xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, selection), nullptr));
    return manager ? manager->owner : xcb_window_t(XCB_WINDOW_NONE);
}

QByteArray managersProperty(xcb_connection_t *server)
{
    const xcb_window_t manager = managersWindow(server, x11Atom(server, managerSelection));
    if (manager == XCB_WINDOW_NONE)
        return {};
    const auto question = xcb_get_property(
        server, 0, manager, x11Atom(server, settingsProperty), XCB_ATOM_ANY, 0, longestProperty);
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

XSettingsWatch &XSettingsWatch::shared()
{
    // Never destroyed: those that listen to it may go after the application object.
    static auto *const watch = new XSettingsWatch;
    return *watch;
}

XSettingsWatch::XSettingsWatch()
{
    xcb_connection_t *server = x11Connection();
    if (!server)
        return;
    m_managerEvent = x11FollowSelection(server, managerSelection);
    m_selection = x11Atom(server, managerSelection);
    m_property = x11Atom(server, settingsProperty);
    followManager();
    QCoreApplication::instance()->installNativeEventFilter(this);
}

// The toolkit follows it too, on the same connection, which has one set of events for a window.
void XSettingsWatch::followManager()
{
    xcb_connection_t *server = x11Connection();
    m_manager = managersWindow(server, m_selection);
    constexpr uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (m_manager != XCB_WINDOW_NONE)
        xcb_change_window_attributes(server, m_manager, XCB_CW_EVENT_MASK, &events);
}

bool XSettingsWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    const int event = x11EventType(eventType, message);
    if (event == XCB_PROPERTY_NOTIFY) {
        const auto *property = static_cast<const xcb_property_notify_event_t *>(message);
        if (property->window == m_manager && property->atom == m_property)
            Q_EMIT changed();
    } else if (event != 0 && event == m_managerEvent && x11SelectionOf(message) == m_selection) {
        followManager();
        Q_EMIT changed();
    }
    return false;
}

} // namespace platform
