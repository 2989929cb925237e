// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

// Disables and hides controls of a window without moving the keyboard's focus to another one, as the toolkit
// would: a second press of Space must not pause the recording that the first one has started. The focus
// rests on the window instead, and goes back to the control, or with Tab to the control after it.
class FocusKeeper : public QObject {
    Q_OBJECT

public:
    explicit FocusKeeper(QWidget *window);

    void setEnabled(QWidget *control, bool enabled);
    void setVisible(QWidget *control, bool visible);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rest(QWidget *control);
    void restore(QWidget *control);
    bool leave(bool forward);

    QWidget *m_window;
    QPointer<QWidget> m_resting; // had the focus when it was taken away
};
