// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ScreenMark.h"

#include "platform/desktop/X11.h"

#include <QWidget>

namespace platform {

namespace {

// Of 256; a fade shows in it, an eye does not see it in one pixel.
constexpr int difference = 12;
// A fade takes at least this many looks for a step that shows in the mark.
constexpr int looksAtRest = 10;

int shifted(int channel)
{
    return channel > 127 ? channel - difference : channel + difference;
}

} // namespace

ScreenMark::ScreenMark(const QWidget *window, const QPoint &pixel)
{
    xcb_connection_t *connection = x11Connection();
    const auto corner = connection ? x11Corner(connection, window) : std::nullopt;
    if (!corner)
        return;
    m_place = *corner + pixel;
    const auto before = pixelOnScreen();
    if (!before)
        return;
    m_before = m_last = *before;
    m_colour = QColor(shifted(qRed(m_before)), shifted(qGreen(m_before)), shifted(qBlue(m_before)));
}

bool ScreenMark::isThere()
{
    const auto now = pixelOnScreen();
    if (!now)
        return true;
    m_changes += *now == m_last ? 0 : 1;
    m_sameLooks = *now == m_last ? m_sameLooks + 1 : 0;
    m_last = *now;
    if (m_last == m_before)
        return false;
    const bool cameAtOnce = m_changes == 1 && m_colour->rgb() == m_last;
    return cameAtOnce || m_sameLooks >= looksAtRest;
}

// Nothing outside the screen, and on a screen with other than eight bits a channel.
std::optional<QRgb> ScreenMark::pixelOnScreen() const
{
    xcb_connection_t *connection = x11Connection();
    const xcb_screen_t *screen = x11Screen(connection);
    if (screen->root_depth != 24)
        return std::nullopt;
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root,
        static_cast<int16_t>(m_place.x()), static_cast<int16_t>(m_place.y()), 1, 1, ~0U);
    const X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, cookie, nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < 4)
        return std::nullopt;
    const uint8_t *bytes = xcb_get_image_data(reply.get());
    return qRgb(bytes[2], bytes[1], bytes[0]);
}

} // namespace platform
