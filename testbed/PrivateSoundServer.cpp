// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/PrivateSoundServer.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <stdexcept>

namespace testbed {

using namespace Qt::StringLiterals;

namespace {

constexpr int stepDeadline = 20'000; // milliseconds; the script's own is shorter

} // namespace

PrivateSoundServer::PrivateSoundServer(const QStringList &microphones, Kind kind)
{
    QStringList arguments{QStringLiteral(FLIPSIDE_TESTBED "/sound_server.py")};
    if (kind == Kind::PipeWire)
        arguments.append(u"--pipewire"_s);
    for (const QString &microphone : microphones)
        arguments.append({u"--mic"_s, microphone});
    m_script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_script.start(u"python3"_s, arguments);
    const QJsonObject environment = answer().value("environment"_L1).toObject();
    qputenv("PULSE_SERVER", environment.value("PULSE_SERVER"_L1).toString().toUtf8());
}

PrivateSoundServer::~PrivateSoundServer()
{
    qunsetenv("PULSE_SERVER");
    m_script.closeWriteChannel();
    if (!m_script.waitForFinished(stepDeadline))
        m_script.kill();
}

qint64 PrivateSoundServer::position(const QString &name)
{
    return command(u"position "_s + name).value("frames"_L1).toInteger();
}

QJsonObject PrivateSoundServer::command(const QString &line)
{
    m_script.write(line.toUtf8() + '\n');
    return answer();
}

QJsonObject PrivateSoundServer::answer()
{
    const QDeadlineTimer deadline(stepDeadline);
    while (!m_script.canReadLine())
        if (!m_script.waitForReadyRead(int(deadline.remainingTime())))
            throw std::runtime_error("The sound server does not answer.");
    const QByteArray line = m_script.readLine();
    QJsonObject answer = QJsonDocument::fromJson(line).object();
    if (answer.isEmpty() ? line != "{}\n" : answer.contains("error"_L1))
        throw std::runtime_error("The sound server says " + line.toStdString());
    return answer;
}

} // namespace testbed
