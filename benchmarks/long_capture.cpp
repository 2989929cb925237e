// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A recording of a hundred hours in a few minutes:
//     long_capture FOLDER [SECONDS]
// Sound is delivered to a recording task as fast as it takes it, in buffers of 20 ms, and really encoded at
// 320 kbit/s. What fits into the given time (120 seconds) is the first part; it shows that memory does not
// grow. The second part begins where hour 99:59 would: the count of captured bytes is set forward. The third
// crosses the border of 4 GiB in a file of its own.

#include "KTAudioControl/KTAudioControl.h"
#include "audio/HBRecordingTask.h"
#include "encoder/KTMp3LameConfig.h"
#include "platform/OutputStream.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <atomic>
#include <cstdio>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 framesPerBuffer = 960; // 20 ms
constexpr qint64 bytesPerBuffer = framesPerBuffer * 4;
constexpr qint64 bytesPerSecond = 48000LL * 4;
constexpr qint64 bytesPerHour = 3600LL * 48000 * 4;

// Reports never go back, and the last one must be exact: the time of all buffers.
class Listener : public HBRecordingTaskDelegate {
public:
    void recordingTaskExcuteDuration(HBRecordingTask *, qint64 milliseconds) override
    {
        ++reports;
        inexact += milliseconds < latest;
        latest = milliseconds;
    }
    qint64 reports = 0;
    qint64 inexact = 0;
    qint64 latest = 0;
};

long residentKilobytes()
{
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly))
        return -1;
    return statm.readAll().split(' ').value(1).toLong() * sysconf(_SC_PAGESIZE) / 1024;
}

class Capture {
public:
    Capture(
        testbed::ScriptedSoundSystem &sound, const std::shared_ptr<HBRecordingTask> &task, Listener &listener)
        : m_sound(sound)
        , m_task(task)
        , m_listener(listener)
    {
    }

    // Delivers until the deadline or so many bytes, while the main loop takes the reports.
    qint64 deliver(qint64 milliseconds, qint64 bytes)
    {
        std::atomic<bool> done = false;
        qint64 delivered = 0;
        std::thread thread([&] {
            const QDeadlineTimer deadline(milliseconds);
            const qint64 before = m_task->bytesOfEncoded();
            for (; delivered < bytes && !deadline.hasExpired(); delivered += bytesPerBuffer) {
                m_sound.push(m_music.constData() + (delivered % m_music.size()), std::size_t(bytesPerBuffer));
                letTaskFollow(before + delivered - bytesPerSecond);
            }
            letTaskFollow(before + delivered);
            done = true;
        });
        while (!done) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
            m_peak = std::max(m_peak, residentKilobytes());
        }
        thread.join();
        QCoreApplication::processEvents();
        return delivered;
    }

    bool exact() const
    {
        return m_listener.inexact == 0 && m_listener.latest == m_task->bytesOfEncoded() / 4 * 1000 / 48000;
    }
    long takePeak() { return std::exchange(m_peak, 0); }

private:
    // What the task has not taken yet waits in memory, which is what is measured.
    void letTaskFollow(qint64 bytes)
    {
        while (m_task->bytesOfEncoded() < bytes)
            std::this_thread::sleep_for(std::chrono::microseconds(200));
    }

    testbed::ScriptedSoundSystem &m_sound;
    std::shared_ptr<HBRecordingTask> m_task;
    Listener &m_listener;
    const QByteArray m_music = testbed::noise(48000, 2, 4).bytes();
    long m_peak = 0;
};

void printExactness(const char *what, bool exact, const Listener &listener)
{
    std::printf("%s: elapsed time %s after %lld reports, now %lld.%03lld s\n", what,
        exact ? "exact" : "WRONG", static_cast<long long>(listener.reports),
        static_cast<long long>(listener.latest / 1000), static_cast<long long>(listener.latest % 1000));
}

bool firstPart(Capture &capture, const Listener &listener, qint64 milliseconds)
{
    // The first tenth fills every cache there is.
    capture.deliver(milliseconds / 10, LLONG_MAX);
    const long before = capture.takePeak();
    QElapsedTimer timer;
    timer.start();
    const qint64 bytes = capture.deliver(milliseconds * 9 / 10, LLONG_MAX);
    const double hours = double(bytes) / double(bytesPerHour);
    const long growth = capture.takePeak() - before;
    std::printf("encoded %.2f hours in %.1f s, %.0f times real time; 100 hours would take %.1f hours\n",
        hours, double(timer.elapsed()) / 1000, hours * 3600e3 / double(timer.elapsed()),
        100 / hours * double(timer.elapsed()) / 3600e3);
    std::printf("resident memory %ld kB, grown by %ld kB over %.2f hours\n", before + growth, growth, hours);
    printExactness("first part", capture.exact(), listener);
    return capture.exact() && growth < 512;
}

bool acrossHourHundred(Capture &capture, HBRecordingTask &task, const Listener &listener)
{
    task.setBytesOfEncoded(100 * bytesPerHour - 60LL * 48000 * 4);
    capture.deliver(60000, 120LL * 48000 * 4);
    printExactness("across hour 100", capture.exact(), listener);
    return capture.exact();
}

// Through the stream that a take is written to, call by call, over a hole that takes no space on the disk.
bool acrossFourGibibytes(const QString &path)
{
    constexpr qint64 border = 4LL << 30;
    constexpr qsizetype call = 960; // bytes, one frame at 320 kbit/s
    const QByteArray music = testbed::encodedMp3(testbed::noise(48000, 2, 60), 320);
    platform::OutputStream stream;
    if (!stream.open(path) || fseeko(stream.get(), border - music.size() / 2, SEEK_SET) != 0)
        return false;
    for (qsizetype at = 0; at < music.size(); at += call)
        std::fwrite(music.constData() + at, 1, size_t(qMin(call, music.size() - at)), stream.get());
    stream.close();

    QFile file(path);
    const bool isWhole
        = file.open(QIODevice::ReadOnly) && file.seek(border - music.size() / 2) && file.readAll() == music;
    std::printf("across 4 GiB: a file of %lld bytes, the last %lld of them %s\n",
        static_cast<long long>(file.size()), static_cast<long long>(music.size()),
        isWhole ? "as given" : "WRONG");
    return isWhole;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "long_capture FOLDER [SECONDS]\n");
        return 2;
    }
    const qint64 milliseconds = qint64(argc > 2 ? std::atof(argv[2]) * 1000 : 120000);
    const testbed::ScriptedSoundSystemScope sound;
    sound->setDevices(QStringList{u"Microphone"_s});
    const auto device = KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s);
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config->setIsCBR(true);
    config->setEncoderEngineQuality(KTMp3LameConfig::FastQuality);
    const QString path = QDir(QFile::decodeName(argv[1])).absoluteFilePath(u"long.mp3"_s);
    const auto task = std::make_shared<HBRecordingTask>(device, config, QUrl::fromLocalFile(path));
    Listener listener;
    task->setDelegate(&listener);
    if (!task->startRecord())
        return 1;
    Capture capture(*sound, task, listener);
    const bool good = firstPart(capture, listener, milliseconds)
        && acrossHourHundred(capture, *task, listener) && acrossFourGibibytes(path + u".border"_s);
    task->stopRecord();
    QFile::remove(path);
    QFile::remove(path + u".border"_s);
    return good ? 0 : 1;
}
