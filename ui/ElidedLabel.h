// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

// A label of one line that shortens its text in the middle instead of growing, a path before its last name,
// with the whole text as tool tip. Takes any text: it is always plain, and never more than one line.
class ElidedLabel : public QLabel {
    Q_OBJECT
    // Declared again so that a change made through the property reaches this class's setter.
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    explicit ElidedLabel(const QString &text, QWidget *parent = nullptr);

    void setText(const QString &text);
    // What is drawn at the present width.
    QString displayedText() const { return shortened(textRect().width()); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    // Where the text may stand: the label without its margin at both sides.
    virtual QRect textRect() const;
    // What the text is drawn in.
    virtual QFont textFont() const { return font(); }
    QString shortened(int width) const;
    void paintText(QPainter &painter, const QRect &place);
    void paintEvent(QPaintEvent *event) override;
};
