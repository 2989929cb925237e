// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

// Owns a window that is made from an interface file (resources/<name>.ui) when it is first asked for. Main
// thread only.
class WindowController : public QObject {
    Q_OBJECT

public:
    explicit WindowController(const QString &windowNibName);
    ~WindowController() override;

    QString windowNibName() const { return m_windowNibName; }
    // Loads the window on the first call, and again should it have been destroyed from outside.
    QWidget *window();
    bool isWindowLoaded() const { return m_window; }

protected:
    // Makes the window and connects its controls.
    virtual QWidget *loadWindow() = 0;
    // The window is there. The base does nothing.
    virtual void windowDidLoad() { }

private:
    QString m_windowNibName;
    QPointer<QWidget> m_window;
};
