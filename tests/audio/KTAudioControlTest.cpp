// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioControl.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <thread>

using namespace Qt::StringLiterals;
using sound::DeviceList;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MockDelegate : public KTAudioControlDelegate {
public:
    MOCK_METHOD(void, audioControlInputDeviceChanged, (KTAudioControl *), (override));
};

class KTAudioControlTest : public testing::Test {
protected:
    ~KTAudioControlTest() override { control->setDelegate(nullptr); }

    // Every report that is on its way has arrived.
    void settle()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }

    testbed::ScriptedSoundSystemScope system;
    KTAudioControl *const control = KTAudioControl::sharedAudioControl();
    testing::StrictMock<MockDelegate> delegate;
};

TEST_F(KTAudioControlTest, listsTheDefaultFirstThenOthersByNameAndMonitorsLast)
{
    EXPECT_THAT(control->inputDevicesName(), IsEmpty());
    system->setDevices(DeviceList{{{u"a"_s, u"Webcam"_s, false}, {u"b"_s, u"Monitor of Speakers"_s, true},
                                      {u"c"_s, u"line in"_s, false}, {u"d"_s, u"Headset"_s, false},
                                      {u"e"_s, u"Monitor of HDMI"_s, true}},
        u"a"_s});
    settle();
    EXPECT_THAT(control->inputDevicesName(),
        ElementsAre(u"Webcam"_s, u"Headset"_s, u"line in"_s, u"Monitor of HDMI"_s, u"Monitor of Speakers"_s));
}

TEST_F(KTAudioControlTest, numbersEqualNamesAndKeepsTheNumberOfADeviceThatStays)
{
    const sound::Source first{u"a"_s, u"Mic"_s, false};
    const sound::Source second{u"b"_s, u"Mic"_s, false};
    const sound::Source numbered{u"c"_s, u"Mic (2)"_s, false};
    system->setDevices(DeviceList{{first, numbered, second}, u"b"_s});
    EXPECT_THAT(control->inputDevicesName(), ElementsAre(u"Mic"_s, u"Mic (2)"_s, u"Mic (2) (2)"_s));
    const std::uint32_t defaultMic = control->deviceIDFromName(u"Mic"_s);
    const std::uint32_t otherMic = control->deviceIDFromName(u"Mic (2)"_s);

    system->setDevices(DeviceList{{first, numbered, second}, u"a"_s});
    settle();
    EXPECT_EQ(control->deviceIDFromName(u"Mic"_s), defaultMic) << "the name now means another device";
    system->setDevices(DeviceList{{first, numbered}, u"a"_s});
    settle();
    EXPECT_EQ(control->deviceIDFromName(u"Mic (2)"_s), otherMic);
    EXPECT_EQ(control->deviceIDFromName(u"Mic"_s), 0U);
}

TEST_F(KTAudioControlTest, givesAnIdentifierOfItsOwnToEachDeviceForGood)
{
    system->setDevices({u"Line"_s, u"Webcam"_s});
    const std::uint32_t line = control->deviceIDFromName(u"Line"_s);
    EXPECT_NE(line, 0U);
    EXPECT_NE(control->deviceIDFromName(u"Webcam"_s), line);
    EXPECT_EQ(control->deviceIDFromName(u"Nothing"_s), 0U);
    EXPECT_EQ(control->deviceIDFromName(QString()), 0U);

    system->setDevices({u"Webcam"_s});
    settle();
    EXPECT_EQ(control->deviceIDFromName(u"Line"_s), 0U);
    system->setDevices({u"Webcam"_s, u"Line"_s});
    settle();
    EXPECT_EQ(control->deviceIDFromName(u"Line"_s), line);
}

TEST_F(KTAudioControlTest, reportsOnlyWhenOtherNamesAreThere)
{
    system->setDevices({u"Line"_s, u"Webcam"_s});
    control->setDelegate(&delegate);
    ASSERT_THAT(control->inputDevicesName(), ElementsAre(u"Line"_s, u"Webcam"_s));

    system->setDevices({u"Webcam"_s, u"Line"_s}); // a new default
    settle();
    EXPECT_THAT(control->inputDevicesName(), ElementsAre(u"Webcam"_s, u"Line"_s));

    EXPECT_CALL(delegate, audioControlInputDeviceChanged(control)).Times(1);
    std::thread([&] { // changes that come together are one, and a device that only flickers is none
        system->setDevices(QStringList());
        system->setDevices({u"Webcam"_s, u"Line"_s, u"Headset"_s});
    })
        .join();
    EXPECT_THAT(control->inputDevicesName(), ElementsAre(u"Webcam"_s, u"Line"_s)) << "before the report";
    settle();
    EXPECT_THAT(control->inputDevicesName(), ElementsAre(u"Webcam"_s, u"Headset"_s, u"Line"_s));

    control->setDelegate(nullptr);
    system->setDevices(QStringList());
    settle();
    EXPECT_THAT(control->inputDevicesName(), IsEmpty());
}

// Out of file descriptors, for example.
TEST_F(KTAudioControlTest, withoutRoomForAConnectionThereAreNoDevices)
{
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{0, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    sound::setSoundSystem(nullptr);
    EXPECT_THAT(control->inputDevicesName(), IsEmpty());
    EXPECT_FALSE(sound::soundSystem().openCapture(u"Microphone"_s, {}, nullptr).stream);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
}

} // namespace
