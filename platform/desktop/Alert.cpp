// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Alert.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

namespace platform {

namespace {

constexpr QSize kIconSize(48, 48);

Alert::Presenter &presenter()
{
    static Alert::Presenter instance;
    return instance;
}

// On the window that the user looks at, so that the window manager centres the alert there.
void runMessageBox(const Alert &alert)
{
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("alert"));
    box.setIconPixmap(QApplication::windowIcon().pixmap(kIconSize, box.devicePixelRatioF()));
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
    if (presenter())
        presenter()(*this);
    else
        runMessageBox(*this);
}

void Alert::setPresenter(Presenter presenterToUse)
{
    presenter() = std::move(presenterToUse);
}

} // namespace platform
