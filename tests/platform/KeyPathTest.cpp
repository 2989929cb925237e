// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/KeyPath.h"
#include "platform/Binding.h"

#include <QSharedPointer>
#include <gtest/gtest.h>

namespace {

// Two levels, as a controller and its configuration are.
class Inner : public QObject {
    Q_OBJECT
    Q_PROPERTY(int target READ target WRITE setTarget NOTIFY targetChanged)

public:
    int target() const { return m_target; }
    void setTarget(int target)
    {
        if (m_target == target)
            return;
        m_target = target;
        Q_EMIT targetChanged();
    }

Q_SIGNALS:
    void targetChanged();

private:
    int m_target = 0;
};

class Outer : public QObject {
    Q_OBJECT
    Q_PROPERTY(QSharedPointer<Inner> inner READ inner WRITE setInner NOTIFY innerChanged)
    Q_PROPERTY(int state READ state WRITE setState NOTIFY stateChanged)
    Q_PROPERTY(bool selected READ selected NOTIFY selectedChanged)
    Q_PROPERTY(bool enabled READ enabled NOTIFY enabledChanged)

public:
    Outer() { platform::announceDerivedProperties(this); }

    QSharedPointer<Inner> inner() const { return m_inner; }
    void setInner(const QSharedPointer<Inner> &inner)
    {
        m_inner = inner;
        Q_EMIT innerChanged();
    }
    int state() const { return m_state; }
    void setState(int state)
    {
        m_state = state;
        Q_EMIT stateChanged();
    }
    bool selected() const { return m_inner && m_inner->target() != 0; }
    bool enabled() const { return selected() && m_state == 0; }

    Q_INVOKABLE static QStringList keyPathsForValuesAffectingSelected()
    {
        return {QStringLiteral("inner.target")};
    }
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingEnabled()
    {
        return {QStringLiteral("selected"), QStringLiteral("state")};
    }
    // A declaration without a property of that name must do no harm.
    Q_INVOKABLE static QStringList keyPathsForValuesAffectingNothing() { return {QStringLiteral("state")}; }

Q_SIGNALS:
    void innerChanged();
    void stateChanged();
    void selectedChanged();
    void enabledChanged();

private:
    QSharedPointer<Inner> m_inner;
    int m_state = 0;
};

class KeyPathTest : public testing::Test {
protected:
    KeyPathTest()
    {
        QObject::connect(&outer, &Outer::selectedChanged, [this] { ++selected; });
        QObject::connect(&outer, &Outer::enabledChanged, [this] { ++enabled; });
    }

    Outer outer;
    int selected = 0;
    int enabled = 0;
};

TEST_F(KeyPathTest, DerivedPropertiesFollowTheirDeclaredPathsOnce)
{
    outer.setState(1);
    EXPECT_EQ(selected, 0);
    EXPECT_EQ(enabled, 1);

    const auto inner = QSharedPointer<Inner>::create();
    outer.setInner(inner);
    EXPECT_EQ(selected, 1);
    inner->setTarget(1);
    EXPECT_EQ(selected, 2);
    EXPECT_EQ(enabled, 3);
    inner->setTarget(1);
    EXPECT_EQ(selected, 2);
}

TEST_F(KeyPathTest, AReplacedObjectIsFollowedAndTheOldOneIsLeft)
{
    const auto first = QSharedPointer<Inner>::create();
    const auto second = QSharedPointer<Inner>::create();
    outer.setInner(first);
    outer.setInner(second);
    selected = 0;
    first->setTarget(1);
    EXPECT_EQ(selected, 0);
    second->setTarget(1);
    EXPECT_EQ(selected, 1);
    outer.setInner({});
    EXPECT_EQ(selected, 2);
    EXPECT_FALSE(platform::valueForKeyPath(&outer, QStringLiteral("inner.target")).isValid());
}

TEST_F(KeyPathTest, AnObserverMayLeaveWhileItIsNotified)
{
    int calls = 0;
    platform::KeyPathObserver *observer = nullptr;
    observer = new platform::KeyPathObserver(
        &outer, QStringLiteral("state"),
        [&] {
            ++calls;
            delete observer;
        },
        nullptr);
    outer.setState(1);
    outer.setState(2);
    EXPECT_EQ(calls, 1);
}

TEST_F(KeyPathTest, AnObserverWhoseRootIsGoneSaysNothing)
{
    const auto inner = QSharedPointer<Inner>::create();
    auto root = std::make_unique<Outer>();
    root->setInner(inner);
    QObject control;
    int calls = 0;
    new platform::KeyPathObserver(
        root.get(), QStringLiteral("inner.target"), [&] { ++calls; }, &control);
    inner->setTarget(1);
    root.reset();
    inner->setTarget(2);
    EXPECT_EQ(calls, 1);
}

TEST_F(KeyPathTest, ATwoWayBindingCarriesValuesBothWaysAndSurvivesItsEnds)
{
    const auto inner = QSharedPointer<Inner>::create();
    inner->setTarget(7);
    outer.setInner(inner);
    auto control = std::make_unique<Inner>();
    platform::bind(
        control.get(), "target", &outer, QStringLiteral("inner.target"), platform::BindingDirection::TwoWay);
    EXPECT_EQ(control->target(), 7);
    control->setTarget(3);
    EXPECT_EQ(inner->target(), 3);
    inner->setTarget(4);
    EXPECT_EQ(control->target(), 4);

    const auto replacement = QSharedPointer<Inner>::create();
    outer.setInner(replacement);
    EXPECT_EQ(control->target(), 0);
    control->setTarget(9);
    EXPECT_EQ(replacement->target(), 9);
    EXPECT_EQ(inner->target(), 4);
    control.reset();
    replacement->setTarget(1);
}

} // namespace

#include "KeyPathTest.moc"
