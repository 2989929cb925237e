// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/CaptureClock.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

using Cause = KTAudioMissingCause;

// A stream of 48000 frames a second, read every 20 ms.
struct Stream {
    explicit Stream(double speed = 1)
        : perRead(std::int64_t(960 * speed))
    {
        for (int reads = 0; reads < 500; ++reads)
            read();
    }
    bool read()
    {
        pass(20ms);
        return clock.read(now, perRead);
    }
    void pass(std::chrono::milliseconds time)
    {
        now.steady += time;
        now.boot += time;
    }

    CaptureClock clock{48000};
    Moment now{1h, 2h};
    const std::int64_t perRead;
};

struct Interruption {
    const char *what;
    std::chrono::milliseconds frozen; // nobody reads
    std::chrono::milliseconds asleep; // the steady clock stands still
    std::chrono::milliseconds stalled; // the server gives nothing, and this process runs
    std::int64_t waiting; // frames at the server afterwards
    double lost; // seconds
    Cause cause;
};

TEST(CaptureClock, TellsWhatAnInterruptionHasCostAndWhy)
{
    for (const Interruption &it : {Interruption{"kept", 15s, 0s, 0s, 15LL * 48000, 0, Cause::None},
             {"ran over", 31s, 0s, 0s, 20LL * 48000, 11, Cause::ComputerBusy},
             {"thrown away", 31s, 0s, 0s, 0, 31, Cause::ComputerBusy},
             {"asleep", 1s, 1h, 0s, 48000, 3600, Cause::ComputerAsleep},
             {"stalled", 0s, 0s, 10s, 0, 10, Cause::SoundServerStalled},
             {"shorter than a hiccup", 350ms, 0s, 0s, 0, 0, Cause::None}}) {
        SCOPED_TRACE(it.what);
        // Sound cards whose clocks are right, and a thousandth off.
        for (const double speed : {1.0, 1.001, 0.999}) {
            Stream stream(speed);
            stream.pass(it.frozen);
            stream.now.boot += it.asleep;
            for (auto passed = 0ms; passed < it.stalled; passed += CaptureClock::longestGap) {
                stream.pass(CaptureClock::longestGap);
                stream.clock.tick();
            }
            const bool interrupted = stream.read();
            EXPECT_EQ(interrupted, it.frozen > CaptureClock::longestGap || it.stalled > 0s);
            const CaptureClock::Loss loss = stream.clock.ask(stream.now, stream.now, it.waiting);
            EXPECT_NEAR(double(loss.frames) / 48000, it.lost, 0.06);
            EXPECT_EQ(loss.cause, it.cause);
            // What waited arrives at once, and nothing more is missing.
            EXPECT_FALSE(stream.clock.read(stream.now, it.waiting));
            for (int reads = 0; reads < 100; ++reads)
                EXPECT_FALSE(stream.read());
            EXPECT_EQ(stream.clock.ask(stream.now, stream.now, 0).frames, 0);
        }
    }
}

// Neither what came after the press of a pause, nor the time that an answer was on its way.
TEST(CaptureClock, CountsOnlyWhatIsLostUpToTheMomentInQuestion)
{
    Stream stream;
    stream.pass(3s);
    const auto loss = stream.clock.ask(stream.now, stream.now.before(700ms), 0);
    EXPECT_NEAR(double(loss.frames) / 48000, 2.3, 0.06);
}

// A pause, or a device that was away, is not missing.
TEST(CaptureClock, ForgetsWhatWasBeforeANewBeginning)
{
    Stream stream;
    stream.clock.restart();
    stream.pass(1h);
    EXPECT_FALSE(stream.read());
    EXPECT_EQ(stream.clock.ask(stream.now, stream.now, 0).frames, 0);
}

} // namespace
