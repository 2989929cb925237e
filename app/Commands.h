// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/CommandLine.h"

#include <QObject>
#include <QVariantMap>
#include <functional>

class AppDelegate;

// What became of a command.
struct CommandOutcome {
    bool refused = false;
    // Why it was refused, or what is still to come; for people. Empty when it was done.
    QString words;
};

// The commands that reach the card from outside its window. The controller's own rules decide; what they do
// not allow is refused with the state. Main thread only.
class Commands : public QObject {
    Q_OBJECT

public:
    using Report = std::function<void(const CommandOutcome &outcome)>;

    // The delegate outlives it.
    explicit Commands(AppDelegate *delegate, QObject *parent = nullptr);

    // Reports once, at once or, for a start, when it has succeeded or failed. Not for Present, Status and
    // Quit, which are not the controller's.
    void run(Command command, const Report &report);

    // Texts, empty where there is none and the same in all languages: "state" as named below, "elapsed" as on
    // the card, "device" of the recording or else of the next one, "file" with its whole path.
    QVariantMap status() const;

    // One word for each RecorderState, for scripts.
    static QString nameOfState(int state);

private:
    void followState();
    void runAllowed(
        bool allowed, void (AppDelegate::*action)(QObject *), const char *verb, const Report &report);
    void record(const Report &report);
    void reportStart(const Report &report);
    void showOutput(const Report &report);
    CommandOutcome refusal(const char *verb) const;

    AppDelegate *m_delegate;
    int m_state;
    QString m_device; // of the recording; the choice for the next one may differ
};
