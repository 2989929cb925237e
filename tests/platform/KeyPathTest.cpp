// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/KeyPath.h"
#include "platform/Binding.h"

#include <QSharedPointer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

// A controller when it has another, its configuration, inside; a control when it stands alone.
class Thing : public QObject {
    Q_OBJECT
    Q_PROPERTY(int target MEMBER target NOTIFY targetChanged)
    Q_PROPERTY(QSharedPointer<Thing> inner MEMBER inner NOTIFY innerChanged)
    Q_PROPERTY(int sum READ sum NOTIFY sumChanged)
    Q_PROPERTY(int silent MEMBER target)

public:
    Thing() { platform::announceDerivedProperties(this); }

    void setTarget(int value) { setProperty("target", value); }
    QSharedPointer<Thing> replaceInner(int value)
    {
        auto other = QSharedPointer<Thing>::create();
        other->target = value;
        setProperty("inner", QVariant::fromValue(other));
        return other;
    }
    int sum() const { return target + (inner ? inner->target : 0); }

    Q_INVOKABLE static QStringList keyPathsForValuesAffectingSum()
    {
        return {u"target"_s, u"inner.target"_s};
    }
    // A declaration for a property that the class does not have does no harm.
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingNothing() { return {u"target"_s}; }

    int target = 0;
    QSharedPointer<Thing> inner;

Q_SIGNALS:
    void targetChanged();
    void innerChanged();
    void sumChanged();
};

TEST(KeyPath, AnnouncesDerivedPropertiesOnceAndFollowsAReplacedObject)
{
    Thing outer;
    const QSignalSpy sum(&outer, &Thing::sumChanged);
    int announcements = 0;
    const auto expectOne = [&] { EXPECT_EQ(sum.count(), ++announcements); };
    outer.setTarget(1);
    expectOne();
    const auto first = outer.replaceInner(2);
    expectOne();
    first->setTarget(3);
    expectOne();
    const auto second = outer.replaceInner(4);
    expectOne();
    second->setTarget(5);
    expectOne();
    first->setTarget(6); // nobody holds it now
    EXPECT_EQ(sum.count(), announcements);
    outer.setProperty("inner", QVariant::fromValue(QSharedPointer<Thing>()));
    expectOne();
    EXPECT_FALSE(platform::valueForKeyPath(&outer, u"inner.target"_s).isValid());
}

TEST(Binding, CarriesValuesBothWaysAndSurvivesItsEnds)
{
    Thing outer;
    const auto first = outer.replaceInner(7);
    auto control = std::make_unique<Thing>();
    platform::bind(control.get(), "target", &outer, u"inner.target"_s, platform::BindingDirection::TwoWay);
    EXPECT_EQ(control->target, 7);
    control->setTarget(3);
    EXPECT_EQ(first->target, 3);

    const auto second = outer.replaceInner(4);
    EXPECT_EQ(control->target, 4);
    control->setTarget(9);
    EXPECT_EQ(second->target, 9);
    EXPECT_EQ(first->target, 3);
    control.reset();
    second->setTarget(1);
}

TEST(Binding, SaysSoLoudlyWhenAPropertyIsMisspeltOrNeverAnnounced)
{
    using enum platform::BindingDirection;
    Thing source;
    Thing control;
    EXPECT_DEBUG_DEATH(
        platform::bind(&control, "targte", &source, u"target"_s), "Thing has no property targte");
    EXPECT_DEBUG_DEATH(platform::bind(&control, "target", &source, u"inenr.target"_s), "no property inenr");
    EXPECT_DEBUG_DEATH(
        platform::bind(&control, "silent", &source, u"target"_s, TwoWay), "no signal for a change of");
}

} // namespace

#include "KeyPathTest.moc"
