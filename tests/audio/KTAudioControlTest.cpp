// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/audio/AudioRig.h"

#include <sys/resource.h>
#include <thread>

namespace {

class KTAudioControlTest : public AudioRig, public KTAudioControlDelegate {
protected:
    ~KTAudioControlTest() override { control->setDelegate(nullptr); }

    void audioControlInputDeviceChanged(KTAudioControl *) override
    {
        ++reports;
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
    }
    void audioControlInputMuteChanged(KTAudioControl *) override { ++muteReports; }
    QStringList namesAfter(const sound::DeviceList &devices)
    {
        sound->setDevices(devices);
        turnMainLoop();
        return control->inputDevicesName();
    }

    KTAudioControl *const control = KTAudioControl::sharedAudioControl();
    const std::thread::id mainThread = std::this_thread::get_id();
    int reports = 0;
    int muteReports = 0;
};

// Another order, and the user sees another device chosen after each launch.
TEST_F(KTAudioControlTest, ListsTheDefaultFirstThenOthersByNameAndMonitorsLast)
{
    EXPECT_EQ(namesAfter({}), QStringList());
    EXPECT_EQ(namesAfter({{{u"a"_s, u"Webcam"_s, false}, {u"b"_s, u"Monitor of Speakers"_s, true},
                              {u"c"_s, u"USB Mic"_s, false}, {u"d"_s, u"line in"_s, false},
                              {u"e"_s, u"Monitor of HDMI"_s, true}},
                  u"a"_s}),
        QStringList(
            {u"Webcam"_s, u"line in"_s, u"USB Mic"_s, u"Monitor of HDMI"_s, u"Monitor of Speakers"_s}));
}

// A name that the user has chosen must not come to mean another device.
TEST_F(KTAudioControlTest, NumbersEqualNamesAndKeepsNameAndIdentifierOfEachDevice)
{
    const sound::Source first{u"a"_s, u"Mic"_s, false};
    const sound::Source second{u"b"_s, u"Mic"_s, false};
    const sound::Source numbered{u"c"_s, u"Mic (2)"_s, false};
    EXPECT_EQ(namesAfter({{first, numbered, second}, u"b"_s}),
        QStringList({u"Mic"_s, u"Mic (2)"_s, u"Mic (2) (2)"_s}));
    const std::uint32_t ofSecond = control->deviceIDFromName(u"Mic"_s);
    const std::uint32_t ofFirst = control->deviceIDFromName(u"Mic (2)"_s);
    EXPECT_NE(ofFirst, ofSecond);

    namesAfter({{first, numbered, second}, u"a"_s});
    EXPECT_EQ(control->deviceIDFromName(u"Mic"_s), ofSecond);
    namesAfter({{first, numbered}, u"a"_s});
    EXPECT_EQ(control->deviceIDFromName(u"Mic (2)"_s), ofFirst);
    EXPECT_EQ(control->deviceIDFromName(u"Mic"_s), 0U);
    EXPECT_EQ(control->deviceIDFromName(QString()), 0U);
    namesAfter({{second}, u"b"_s});
    EXPECT_EQ(control->deviceIDFromName(u"Mic"_s), ofSecond);
}

// Every report takes the user's choice away.
TEST_F(KTAudioControlTest, ReportsOnTheMainThreadAndOnlyWhenOtherNamesAreThere)
{
    sound->setDevices({u"Line"_s, u"Webcam"_s});
    ASSERT_EQ(control->inputDevicesName(), QStringList({u"Line"_s, u"Webcam"_s}));
    control->setDelegate(this);
    std::thread([&] { sound->setDevices({u"Webcam"_s, u"Line"_s}); }).join(); // a new default
    turnMainLoop();
    EXPECT_EQ(control->inputDevicesName(), QStringList({u"Webcam"_s, u"Line"_s}));
    EXPECT_EQ(reports, 0);

    std::thread([&] { // changes that come together are one, and a device that only flickers is none
        sound->setDevices(QStringList());
        sound->setDevices({u"Webcam"_s, u"Line"_s, u"Headset"_s});
    })
        .join();
    EXPECT_EQ(reports, 0);
    turnMainLoop();
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(control->inputDevicesName(), QStringList({u"Webcam"_s, u"Headset"_s, u"Line"_s}));
    control->setDelegate(nullptr);
    sound->setDevices(QStringList());
    turnMainLoop();
    EXPECT_EQ(reports, 1);
}

// A device that is muted must be known by its identifier, and must not cost the user his choice.
TEST_F(KTAudioControlTest, TellsWhichDeviceIsMutedAndReportsNoOtherList)
{
    sound::Source mic{u"a"_s, u"Mic"_s, false};
    const sound::Source monitor{u"b"_s, u"Monitor"_s, true, true};
    namesAfter({{mic, monitor}, u"a"_s});
    const std::uint32_t ofMic = control->deviceIDFromName(u"Mic"_s);
    EXPECT_TRUE(control->isInputMuted(control->deviceIDFromName(u"Monitor"_s)));
    control->setDelegate(this);
    for (const bool muted : {false, true, true, false}) {
        mic.muted = muted;
        namesAfter({{mic, monitor}, u"a"_s});
        EXPECT_EQ(control->isInputMuted(ofMic), muted);
    }
    EXPECT_EQ(muteReports, 2);
    EXPECT_EQ(reports, 0);
    namesAfter({});
    EXPECT_EQ(muteReports, 3);
    EXPECT_FALSE(control->isInputMuted(control->deviceIDFromName(u"Monitor"_s)));
}

// Out of file descriptors, for example.
TEST_F(KTAudioControlTest, SaysThatThereIsNoRoomForAConnection)
{
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{0, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto real = sound::replaceSoundSystem(nullptr);
    EXPECT_EQ(control->inputDevicesName(), QStringList());
    EXPECT_EQ(sound::soundSystem()->openCapture(u"Microphone"_s, {}, nullptr, {}).problem,
        u"there is no room for a connection to the sound server"_s);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
}

} // namespace
