// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/WindowPlatform.h"

#include <QByteArray>
#include <QtMessageHandler>
#include <cstdio>
#include <cstdlib>

namespace platform {

namespace {

QtMessageHandler handlerBefore = nullptr;
int codeWithoutDisplay = 0;

void endWithoutDisplay(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtFatalMsg)
        return handlerBefore(type, context, text);
    std::fputs("flipside: there is no display\n", stderr);
    std::_Exit(codeWithoutDisplay);
}

} // namespace

void preferNativePlatform()
{
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "wayland;xcb");
}

DisplayNeeded::DisplayNeeded(int exitCode)
{
    codeWithoutDisplay = exitCode;
    handlerBefore = qInstallMessageHandler(endWithoutDisplay);
}

DisplayNeeded::~DisplayNeeded()
{
    qInstallMessageHandler(handlerBefore);
}

} // namespace platform
