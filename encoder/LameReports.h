// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

class KTMp3Lame;
struct lame_global_struct;

// Results of libmp3lame's encode functions.
enum LameError : int { OutputTooSmall = -1, OutOfMemory = -2, NotReady = -3, PsychoAcousticProblems = -4 };

// libmp3lame reports through plain functions that carry no context, and only from inside its own calls. So a
// writer announces itself as the caller, for as long as the call lasts, on its own thread.
class LameReports {
public:
    // What this thread's calls into libmp3lame report goes to `writer` for as long as this object lives.
    explicit LameReports(KTMp3Lame *writer)
        : m_previous(s_writer)
    {
        s_writer = writer;
    }
    ~LameReports() { s_writer = m_previous; }
    LameReports(const LameReports &) = delete;
    LameReports &operator=(const LameReports &) = delete;

    // Sets the error, message and debug hooks of a handle.
    static void install(lame_global_struct *handle);

    // Null for results that are not errors.
    static const char *errorText(int result);

private:
    friend struct LameReportHooks;
    static constinit inline thread_local KTMp3Lame *s_writer = nullptr;
    KTMp3Lame *m_previous;
};
