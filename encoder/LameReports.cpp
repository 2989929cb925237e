// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/LameReports.h"

#include "encoder/KTMp3Lame.h"

#include <cstdarg>
#include <cstdio>
#include <lame/lame.h>

struct LameReportHooks {
    // libmp3lame's own messages are a line each. One that does not fit means that its arguments do not match
    // its format; nothing is written past the buffer, and going on would not be safe.
    [[gnu::format(printf, 1, 0)]] static void report(const char *format, va_list arguments, qint32 msgType)
    {
        if (!LameReports::s_writer)
            return;
        char text[1024] = {};
        const int length = std::vsnprintf(text, sizeof text, format, arguments);
        if (length >= int(sizeof text))
            qFatal("A message of the encoder needs %d bytes.", length);
        LameReports::s_writer->reportMessage(QString::fromUtf8(text), msgType);
    }
    [[gnu::format(printf, 1, 0)]] static void error(const char *format, va_list arguments)
    {
        report(format, arguments, KTMp3Lame::ErrorMessage);
    }
    [[gnu::format(printf, 1, 0)]] static void message(const char *format, va_list arguments)
    {
        report(format, arguments, KTMp3Lame::PlainMessage);
    }
    [[gnu::format(printf, 1, 0)]] static void debug(const char *format, va_list arguments)
    {
        report(format, arguments, KTMp3Lame::DebugMessage);
    }
};

void LameReports::install(lame_global_struct *handle)
{
    lame_set_errorf(handle, LameReportHooks::error);
    lame_set_msgf(handle, LameReportHooks::message);
    lame_set_debugf(handle, LameReportHooks::debug);
}

const char *LameReports::errorText(int result)
{
    switch (result) {
    case OutputTooSmall:
        return "Out buffer was too small.";
    case OutOfMemory:
        return "malloc failed..";
    case NotReady:
        return "lame_init_params() not called.";
    case PsychoAcousticProblems:
        return "psycho acoustic problems.";
    default:
        return result < 0 ? "Unknown error." : nullptr;
    }
}
