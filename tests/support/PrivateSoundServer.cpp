// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/support/PrivateSoundServer.h"

#include <QJsonDocument>
#include <stdexcept>

namespace testsupport {

using namespace Qt::StringLiterals;

namespace {

QStringList commandLine(const QStringList &microphones, PrivateSoundServer::Kind kind)
{
    QStringList command{
        u"python3"_s, QStringLiteral(FLIPSIDE_TEST_SUPPORT "/sound_server.py"), u"--control"_s};
    if (kind == PrivateSoundServer::Kind::PipeWire)
        command.append(u"--pipewire"_s);
    for (const QString &microphone : microphones)
        command.append({u"--mic"_s, microphone});
    return command;
}

} // namespace

PrivateSoundServer::PrivateSoundServer(const QStringList &microphones, Kind kind)
    : m_script(commandLine(microphones, kind))
{
    const QJsonObject environment = answer().value("environment"_L1).toObject();
    qputenv("PULSE_SERVER", environment.value("PULSE_SERVER"_L1).toString().toUtf8());
}

PrivateSoundServer::~PrivateSoundServer()
{
    qunsetenv("PULSE_SERVER");
}

qint64 PrivateSoundServer::position(const QString &name)
{
    return command(u"position "_s + name).value("frames"_L1).toInteger();
}

QJsonObject PrivateSoundServer::command(const QString &line)
{
    m_script.writeLine(line.toUtf8());
    return answer();
}

QJsonObject PrivateSoundServer::answer()
{
    const QByteArray line = m_script.readLine();
    const QJsonObject answer = QJsonDocument::fromJson(line).object();
    if (answer.isEmpty() ? line != "{}" : answer.contains("error"_L1))
        throw std::runtime_error("The sound server says " + line.toStdString());
    return answer;
}

} // namespace testsupport
