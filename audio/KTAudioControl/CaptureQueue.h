// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"
#include "platform/ThreadCheck.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

// What was captured, on its way from the sound system's thread to a thread of its own, on which it is
// delivered. The sound system never waits for whoever takes the sound, nor for a disk behind it: what comes
// meanwhile waits in memory, in order.
class CaptureQueue {
public:
    // Whole frames. The capture thread.
    using Deliver = std::function<void(const void *frames, std::size_t bytes)>;

    CaptureQueue(const sound::SampleSpec &spec, Deliver deliver);
    ~CaptureQueue();
    CaptureQueue(const CaptureQueue &) = delete;
    CaptureQueue &operator=(const CaptureQueue &) = delete;

    // False when no thread can be had. Nothing is delivered until release().
    bool start();
    // Delivery begins. Any thread.
    void release();
    // Delivery begins by then at the latest. Main thread.
    void releaseAt(std::chrono::steady_clock::time_point latest);

    // Sound thread. False when there is no memory for them: they are lost. In the normal case nothing is
    // allocated.
    bool add(const void *frames, std::size_t bytes);
    // Takes no memory, however long it is. Any thread.
    void addSilence(std::size_t bytes);

    // Main thread. False when the deadline passes before all that was added has been delivered, which then
    // goes on. Does not wait for delivery to begin.
    bool waitUntilDelivered(std::chrono::milliseconds deadline);
    // Whether all that was added has been delivered. Any thread.
    bool isEmpty() const;
    // Calls it once, when all that was added has been delivered: on the capture thread, or inside this call.
    // Main thread.
    void whenDelivered(std::function<void()> then);
    // Leaves out all silence that is still to come, for the sound behind it. Main thread.
    void leaveOutSilence();
    // Drops what waits, and waits for a delivery under way. Main thread.
    void end();

    // When it has ended.
    struct LeftOut {
        std::size_t sound = 0; // bytes
        std::size_t silence = 0;
    };
    LeftOut leftOut() const { return {m_soundLeft, m_silenceLeft}; }

private:
    // Silence to be inserted after the first `behind` bytes.
    struct Silence {
        std::size_t behind;
        std::size_t bytes;
    };
    struct Batch {
        std::vector<std::byte> bytes;
        std::vector<Silence> silences;
        bool isEmpty() const { return bytes.empty() && silences.empty(); }
    };

    void run();
    void deliver(Batch &batch);
    void deliverSound(const std::byte *frames, std::size_t bytes);
    void deliverSilence(std::size_t bytes);
    void rest(std::chrono::steady_clock::duration time);
    bool mayDeliver(std::size_t sound, std::size_t silence);
    void delivered(std::unique_lock<std::mutex> &lock);
    bool mayDeliver() const;
    void wait(std::unique_lock<std::mutex> &lock);

    const Deliver m_deliver;
    const std::size_t m_piece; // bytes delivered at once, at most
    const std::size_t m_batch; // bytes that are worth waking up for
    platform::ThreadCheck m_captureThread;
    std::thread m_thread;
    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    std::condition_variable m_delivered;
    Batch m_incoming;
    bool m_delivering = false;
    bool m_resting = true; // nothing has come for a while: the thread waits without a deadline
    bool m_awaited = false; // somebody waits until all is delivered
    bool m_hurried = false; // a little is delivered as well
    bool m_soundOnly = false;
    bool m_ended = false;
    std::size_t m_soundLeft = 0; // bytes, not delivered yet
    std::size_t m_silenceLeft = 0;
    std::function<void()> m_whenDelivered;
    std::chrono::steady_clock::time_point m_heldUntil = std::chrono::steady_clock::time_point::max();
};
