// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A recording of a hundred hours in a few minutes:
//     long_capture FOLDER [SECONDS]
// Sound is delivered to a recording task as fast as it takes it, in buffers of 20 ms, and really encoded at
// 320 kbit/s. What fits into the given time (120 seconds) is the first part; it shows that memory does not
// grow. The second part begins where hour 99:59 would: the count of captured bytes is set forward, and the
// file's write position to just below 4 GiB, over a hole that takes no space on the disk. It crosses both
// borders.

#include "KTAudioControl/KTAudioControl.h"
#include "audio/HBRecordingTask.h"
#include "encoder/KTMp3LameConfig.h"
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
constexpr qint64 bytesPerSecond = 48000 * 4;
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

// The descriptor that the writer has opened for this path.
int descriptorOf(const QString &path)
{
    const QDir descriptors(u"/proc/self/fd"_s);
    for (const QString &name : descriptors.entryList(QDir::Files | QDir::System)) {
        if (QFile::symLinkTarget(descriptors.filePath(name)) == path)
            return name.toInt();
    }
    return -1;
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

bool secondPart(Capture &capture, HBRecordingTask &task, const Listener &listener)
{
    const QString path = task.url().toLocalFile();
    const off_t border = 4LL << 30;
    if (lseek(descriptorOf(path), border - (1 << 20), SEEK_SET) < 0)
        return false;
    task.setBytesOfEncoded(100 * bytesPerHour - 60LL * 48000 * 4);
    capture.deliver(60000, 120LL * 48000 * 4);
    printExactness("across hour 100", capture.exact(), listener);

    QFile file(path);
    QFile tail(path + u".tail.mp3"_s);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(border - (1 << 20)) || !tail.open(QIODevice::WriteOnly))
        return false;
    const QByteArray written = file.readAll();
    tail.write(written);
    tail.close();
    const double seconds = testbed::decodedByMpg123(tail.fileName()).seconds();
    std::printf("across 4 GiB: file of %lld bytes; the last %lld of them decode to %.2f of 120 s\n",
        static_cast<long long>(file.size()), static_cast<long long>(written.size()), seconds);
    return capture.exact() && file.size() > border && std::abs(seconds - 120) < 0.2;
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
    const bool good = firstPart(capture, listener, milliseconds) && secondPart(capture, *task, listener);
    task->stopRecord();
    QFile::remove(path);
    QFile::remove(path + u".tail.mp3"_s);
    return good ? 0 : 1;
}
