// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Watches places on the screen as a user sees them, compositor included:
//
//     screen_sampler SECONDS "X,Y X,Y ..." [X Y WIDTH HEIGHT FOLDER COUNT]
//
// Prints "ready", then looks at the places, several times for each frame of a screen, until standard input
// ends, for that long at most, and prints a line for each look: milliseconds, and red, green and blue of each
// place. With a folder it also writes COUNT pictures of a part of the screen that holds all places, evenly
// spread over the time in which that part changed, as 00.png, 01.png, ...

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
    return QImage(data, part.width(), part.height(), qsizetype(part.width()) * 4, QImage::Format_RGB32)
        .copy();
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

std::vector<QPoint> placesIn(const QString &text)
{
    std::vector<QPoint> places;
    for (const QString &place : text.split(QLatin1Char(' ')))
        places.emplace_back(
            place.section(QLatin1Char(','), 0, 0).toInt(), place.section(QLatin1Char(','), 1).toInt());
    return places;
}

QRect around(const std::vector<QPoint> &places)
{
    QRect part;
    for (const QPoint &place : places)
        part |= QRect(place, QSize(1, 1));
    return part;
}

void print(const Sample &sample, const QRect &part, const std::vector<QPoint> &places)
{
    std::printf("%lld", sample.milliseconds);
    for (const QPoint &place : places) {
        const QColor colour = sample.picture.pixelColor(place - part.topLeft());
        std::printf(" %d %d %d", colour.red(), colour.green(), colour.blue());
    }
    std::putchar('\n');
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3 && argc != 9)
        return 2;
    const bool keepsPictures = argc == 9;
    const double milliseconds = std::atof(argv[1]) * 1e3;
    const std::vector<QPoint> places = placesIn(QString::fromLocal8Bit(argv[2]));
    const QRect part = keepsPictures
        ? QRect(std::atoi(argv[3]), std::atoi(argv[4]), std::atoi(argv[5]), std::atoi(argv[6]))
        : around(places);
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
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
        print(samples.back(), part, places);
        if (!keepsPictures)
            samples.clear();
        // What is watched needs the processor too.
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    if (keepsPictures)
        writePictures(samples, QString::fromLocal8Bit(argv[7]), std::atoi(argv[8]));
    return 0;
}
