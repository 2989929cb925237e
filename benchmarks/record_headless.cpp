// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Records without a window:
//     record_headless SECONDS FILE [--device NAME] [--cbr]
// and prints one line of JSON: what it cost, and how soon the first sound was there. --cbr chooses a constant
// 320 kbit/s instead of the default settings, for comparison with other programs.

#include "KTAudioControl/KTAudioControl.h"
#include "audio/HBRecordingTask.h"
#include "encoder/KTMp3LameConfig.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

class Session : public HBRecordingTaskDelegate {
public:
    explicit Session(const QCommandLineParser &options)
        : m_milliseconds(qRound64(options.positionalArguments().at(0).toDouble() * 1000))
        , m_url(QUrl::fromLocalFile(options.positionalArguments().at(1)))
        , m_device(options.value(u"device"_s))
    {
        if (options.isSet(u"cbr"_s)) {
            m_config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
            m_config->setIsCBR(true);
        }
    }

    bool start()
    {
        auto *const control = KTAudioControl::sharedAudioControl();
        const QStringList names = control->inputDevicesName();
        if (m_device.isEmpty() && !names.isEmpty())
            m_device = names.first();
        m_task = std::make_shared<HBRecordingTask>(control->deviceIDFromName(m_device), m_config, m_url);
        m_task->setDelegate(this);
        m_sinceStart.start();
        return m_task->startRecord();
    }

    void recordingTaskExcuteDuration(HBRecordingTask *task, qint64 milliseconds) override
    {
        if (m_firstSound < 0)
            m_firstSound = m_sinceStart.nsecsElapsed() / 1000;
        m_recorded = milliseconds;
        if (milliseconds >= m_milliseconds) {
            task->stopRecord();
            QCoreApplication::quit();
        }
    }

    void print() const
    {
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        const auto seconds
            = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
        std::printf(
            "{\"recorded_ms\": %lld, \"first_sound_ms\": %.1f, \"cpu_seconds\": %.3f, \"peak_kb\": %ld}\n",
            static_cast<long long>(m_recorded), double(m_firstSound) / 1000,
            seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss);
    }

    qint64 recorded() const { return m_recorded; }
    qint64 wanted() const { return m_milliseconds; }

private:
    const qint64 m_milliseconds;
    const QUrl m_url;
    QString m_device;
    QSharedPointer<KTMp3LameConfig> m_config = QSharedPointer<KTMp3LameConfig>::create();
    std::shared_ptr<HBRecordingTask> m_task;
    QElapsedTimer m_sinceStart;
    qint64 m_firstSound = -1; // microseconds
    qint64 m_recorded = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addPositionalArgument(u"seconds"_s, u"How long to record."_s);
    options.addPositionalArgument(u"file"_s, u"The MP3 file to write."_s);
    options.addOption({u"device"_s, u"Record from this input instead of the default one."_s, u"name"_s});
    options.addOption({u"cbr"_s, u"320 kbit/s, constant."_s});
    options.addHelpOption();
    options.process(application);
    if (options.positionalArguments().size() != 2)
        options.showHelp(2);
    Session session(options);
    if (!session.start())
        return 1;
    // A device that goes away delivers nothing: the end comes anyway.
    QTimer::singleShot(session.wanted() + 10000, &application, &QCoreApplication::quit);
    QCoreApplication::exec();
    session.print();
    return session.recorded() >= session.wanted() ? 0 : 1;
}
