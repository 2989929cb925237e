// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>

namespace platform {

// Whether a property list is small enough, written out in full, to be handed to a parser that recurses.
// Objects of a binary list may be referred to more than once: a few hundred bytes can stand for billions of
// objects, or for a list that contains itself, and the parser follows every reference. An XML list is at most
// as deep as it is long, so that its size alone bounds it.
bool isPropertyListOfBoundedShape(QByteArrayView data);

bool isBinaryPropertyList(QByteArrayView data);

} // namespace platform
