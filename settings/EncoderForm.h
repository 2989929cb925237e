// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>
#include <memory>

class QAction;

namespace Ui {
class EncoderForm;
}

// The controls of an encoder configuration, on the preferences card and on the encoder sheet alike. Its owner
// binds it once, and sends the commands of its boxes and menus. Main thread only.
class EncoderForm : public QWidget {
    Q_OBJECT
    // The configuration's target as a number. Everything but 0 is shown as the quality. What only a bitrate
    // target uses is enabled for 0.
    Q_PROPERTY(int target READ target WRITE setTarget NOTIFY targetChosen)

public:
    explicit EncoderForm(QWidget *parent = nullptr);
    ~EncoderForm() override;

    // `controller` holds the configuration in its property `config`, which may be replaced at any time, and
    // the target at a key path of its own.
    void bindTo(QObject *controller, const QString &targetKeyPath);

    int target() const { return m_target; }
    void setTarget(int target);
    // What only a quality target uses. For a number that is not a target, the owner decides.
    void setQualityEnabled(bool enabled);

    // For the outlets of the owner, and for what it binds and sends by itself.
    const Ui::EncoderForm &controls() const { return *m_ui; }
    // The name that the item stands for, in the encoder's own words; of an item without one, its title. Some
    // desktops mark a letter of that for the keyboard.
    static QString titleOf(const QAction &item);

Q_SIGNALS:
    // Chosen by the user. A number that merely means the same must not replace the one that was set.
    void targetChosen();

private:
    std::unique_ptr<Ui::EncoderForm> m_ui;
    int m_target = 0;
};
