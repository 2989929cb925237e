// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Watches a part of the screen as a user sees it, compositor included:
//
//     screen_sampler X Y WIDTH HEIGHT PROBE_X PROBE_Y SECONDS [FOLDER COUNT]
//
// Prints "ready", takes pictures as fast as it can for that long, then prints a line for each: milliseconds,
// and red, green and blue at the probe. With a folder it also writes COUNT pictures, evenly spread over the
// time in which the part changed, as 00.png, 01.png, ...

#include <QElapsedTimer>
#include <QImage>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <thread>
#include <vector>
#include <xcb/xcb.h>

namespace {

struct Sample {
    qint64 milliseconds;
    QImage picture;
};

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};

struct Disconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

QImage picture(xcb_connection_t *connection, xcb_window_t root, const QRect &part)
{
    const auto cookie = xcb_get_image(
        connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, part.x(), part.y(), part.width(), part.height(), ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, FreeReply> reply(
        xcb_get_image_reply(connection, cookie, nullptr));
    const auto bytes = static_cast<qsizetype>(part.width()) * part.height() * 4;
    if (!reply || xcb_get_image_data_length(reply.get()) < bytes)
        return {};
    const uchar *data = xcb_get_image_data(reply.get());
    return QImage(data, part.width(), part.height(), part.width() * 4, QImage::Format_RGB32).copy();
}

bool inputHasEnded()
{
    pollfd input{0, POLLIN, 0};
    return poll(&input, 1, 0) > 0;
}

void writePictures(const std::vector<Sample> &samples, const QString &folder, int count)
{
    std::size_t first = 0;
    while (first + 1 < samples.size() && samples[first + 1].picture == samples.front().picture)
        ++first;
    std::size_t last = samples.size() - 1;
    while (last > first && samples[last - 1].picture == samples.back().picture)
        --last;
    const qint64 start = samples[first].milliseconds, time = samples[last].milliseconds - start;
    for (int index = 0; index < count; ++index) {
        while (first < last && samples[first].milliseconds - start < time * index / (count - 1))
            ++first;
        samples[first].picture.save(
            QStringLiteral("%1/%2.png").arg(folder).arg(index, 2, 10, QLatin1Char('0')));
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 8 && argc != 10)
        return 2;
    const QRect part(std::atoi(argv[1]), std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    const QPoint probe = QPoint(std::atoi(argv[5]), std::atoi(argv[6])) - part.topLeft();
    const double milliseconds = std::atof(argv[7]) * 1e3;
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()))
        return 1;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    std::puts("ready");
    std::fflush(stdout);

    std::vector<Sample> samples;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds && !inputHasEnded()) {
        samples.push_back({clock.elapsed(), picture(connection.get(), root, part)});
        if (samples.back().picture.isNull())
            return 1;
        const QColor colour = samples.back().picture.pixelColor(probe);
        std::printf(
            "%lld %d %d %d\n", samples.back().milliseconds, colour.red(), colour.green(), colour.blue());
        if (argc < 10)
            samples.clear();
        // What is watched needs the processor too.
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    if (argc == 10)
        writePictures(samples, QString::fromLocal8Bit(argv[8]), std::atoi(argv[9]));
    return 0;
}
