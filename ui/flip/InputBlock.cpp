// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/InputBlock.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>

InputBlock::InputBlock()
{
    QGuiApplication::setOverrideCursor(Qt::BlankCursor);
    qApp->installEventFilter(this);
}

InputBlock::~InputBlock()
{
    QGuiApplication::restoreOverrideCursor();
}

bool InputBlock::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}
