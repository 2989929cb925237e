// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Asks a window every few milliseconds whether it is alive, as a window manager does, and tells how long its
// program's main loop was silent:
//
//     window_watch PID [MILLISECONDS]
//
// Each silence longer than that (50) is a line "BEGIN END WAITED": seconds of the steady clock, and how many
// of them the two processes were ready to run but had no processor; a silence that is not over has the end of
// the watch. "watching" comes first, once the window is there. It ends with its standard input.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <string>
#include <thread>
#include <xcb/xcb.h>

namespace {

constexpr std::chrono::milliseconds betweenQuestions(5);

template <typename T> using Freed = std::unique_ptr<T, decltype(&std::free)>;

template <typename T> Freed<T> freed(T *memory)
{
    return {memory, &std::free};
}

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// How long a process's first thread has waited for a processor, in seconds.
double waitedForProcessor(const std::string &pid)
{
    const std::string path = "/proc/" + pid + "/schedstat";
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path.c_str(), "r"), std::fclose);
    long long ran = 0;
    long long waited = 0;
    if (!file || std::fscanf(file.get(), "%lld %lld", &ran, &waited) != 2)
        return 0;
    return double(waited) / 1e9;
}

class Watch {
public:
    Watch(const char *pid, double shortest)
        : m_pid(pid)
        , m_shortest(shortest)
        , m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
    {
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection.get(), m_root, XCB_CW_EVENT_MASK, &events);
        m_protocols = atom("WM_PROTOCOLS");
        m_ping = atom("_NET_WM_PING");
    }

    bool isConnected() const { return !xcb_connection_has_error(m_connection.get()); }

    // A window of the program, once the window manager knows one.
    bool find()
    {
        const auto list = property(m_root, atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
        const auto *windows = static_cast<xcb_window_t *>(xcb_get_property_value(list.get()));
        for (int i = 0; i < xcb_get_property_value_length(list.get()) / 4; ++i) {
            const auto owner = property(windows[i], atom("_NET_WM_PID"), XCB_ATOM_CARDINAL);
            if (owner && xcb_get_property_value_length(owner.get()) == 4
                && *static_cast<std::uint32_t *>(xcb_get_property_value(owner.get()))
                    == std::strtoul(m_pid.c_str(), nullptr, 10)) {
                m_window = windows[i];
                return true;
            }
        }
        return false;
    }

    void ask()
    {
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = m_window;
        event.type = m_protocols;
        event.data.data32[0] = m_ping;
        event.data.data32[1] = ++m_question;
        event.data.data32[2] = m_window;
        xcb_send_event(
            m_connection.get(), 0, m_window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<char *>(&event));
        xcb_flush(m_connection.get());
        m_waitedBefore = waited();
        m_asked = now();
    }

    // False when the watch is over.
    bool waitForAnswer()
    {
        while (isConnected()) {
            while (const auto event = freed(xcb_poll_for_event(m_connection.get())))
                if (isAnswer(*event)) {
                    tell();
                    return true;
                }
            pollfd files[2]
                = {{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
            poll(files, 2, 1000);
            if (files[1].revents)
                break;
        }
        tell();
        return false;
    }

private:
    xcb_atom_t atom(const char *name)
    {
        const auto cookie = xcb_intern_atom(m_connection.get(), 0, std::uint16_t(std::strlen(name)), name);
        const auto reply = freed(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    Freed<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
    {
        const auto cookie = xcb_get_property(m_connection.get(), 0, window, name, type, 0, 1024);
        return freed(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    }

    bool isAnswer(const xcb_generic_event_t &event) const
    {
        if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE)
            return false;
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event);
        return message.window == m_root && message.type == m_protocols && message.data.data32[0] == m_ping
            && message.data.data32[1] == m_question && message.data.data32[2] == m_window;
    }

    double waited() const { return waitedForProcessor(m_pid) + waitedForProcessor("self"); }

    void tell()
    {
        const double end = now();
        if (end - m_asked <= m_shortest)
            return;
        std::printf("%.3f %.3f %.3f\n", m_asked, end, std::max(0.0, waited() - m_waitedBefore));
        std::fflush(stdout);
    }

    std::string m_pid;
    double m_shortest;
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root = 0;
    xcb_window_t m_window = 0;
    xcb_atom_t m_protocols = 0;
    xcb_atom_t m_ping = 0;
    std::uint32_t m_question = 0;
    double m_asked = 0;
    double m_waitedBefore = 0;
};

bool inputEnds(std::chrono::milliseconds within)
{
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, int(within.count())) != 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    Watch watch(argv[1], (argc > 2 ? std::atof(argv[2]) : 50) / 1000);
    while (watch.isConnected() && !watch.find())
        if (inputEnds(std::chrono::milliseconds(20)))
            return 0;
    std::puts("watching");
    std::fflush(stdout);
    do
        watch.ask();
    while (watch.waitForAnswer() && !inputEnds(betweenQuestions));
    return 0;
}
