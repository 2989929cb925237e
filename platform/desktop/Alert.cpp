// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Alert.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

namespace platform {

namespace {

constexpr QSize iconSize(48, 48);
constexpr QLatin1String nameOfAlerts("alert");

// On the window that the user is looking at, so that the window manager centres the alert there.
void runMessageBox(const Alert &alert)
{
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(nameOfAlerts);
    box.setIconPixmap(QApplication::windowIcon().pixmap(iconSize, box.devicePixelRatioF()));
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowTitle(QApplication::applicationDisplayName());
    box.setTextFormat(Qt::PlainText);
    box.setText(alert.messageText);
    box.setInformativeText(alert.informativeText);
    auto *button = box.addButton(alert.buttonTitle, QMessageBox::AcceptRole);
    button->setAccessibleName(alert.buttonTitle);
    box.setDefaultButton(button);
    box.exec();
}

} // namespace

void Alert::runModal() const
{
    alertPresenter().inUse()(*this);
}

void dismissAlerts()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (auto *alert = qobject_cast<QDialog *>(window); alert && alert->objectName() == nameOfAlerts)
            alert->accept();
}

Seam<std::function<void(const Alert &)>> &alertPresenter()
{
    static Seam<std::function<void(const Alert &)>> seam(runMessageBox);
    return seam;
}

} // namespace platform
