// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QPainterPath>

// A round button with an icon and no text: in a title strip, or on a disc as a transport control. It has no
// accessible name until one is set. In Designer, promote a QWidget to it and set `shape`, `look`, `diameter`.
class IconButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(Icon shape READ shape WRITE setShape NOTIFY shapeChanged)
    Q_PROPERTY(Look look READ look WRITE setLook NOTIFY lookChanged)
    Q_PROPERTY(int diameter READ diameter WRITE setDiameter NOTIFY diameterChanged)

public:
    enum Icon { Gear, Help, Minimise, Close, Record, Pause, Stop, Play };
    Q_ENUM(Icon)
    enum Look {
        // The icon alone; a disc appears under the pointer.
        Plain,
        // A raised disc, for transport controls.
        Disc,
        // The one red disc, for the record control.
        Accent
    };
    Q_ENUM(Look)

    explicit IconButton(QWidget *parent = nullptr);
    explicit IconButton(Icon shape, QWidget *parent = nullptr);

    Icon shape() const { return m_shape; }
    void setShape(Icon shape);
    Look look() const { return m_look; }
    void setLook(Look look);
    // Shows that what the button started is still going on: with a ring around the disc, so that the shape
    // alone tells, and in full colour even while the button is disabled.
    void setLit(bool lit);
    // In points of the card.
    int diameter() const { return m_diameter; }
    void setDiameter(int diameter);

    QSize sizeHint() const override;

Q_SIGNALS:
    void shapeChanged();
    void lookChanged();
    void diameterChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &position) const override;
    bool event(QEvent *event) override;

private:
    bool isHovered() const { return isEnabled() && underMouse(); }
    QRectF disc() const;
    QColor discColor() const;
    QColor edgeColor() const;
    QColor iconColor() const;
    double iconShare() const;
    QRectF paintRing(QPainter &painter, const QRectF &circle) const;

    Icon m_shape = Play;
    Look m_look = Plain;
    bool m_lit = false;
    int m_diameter = 24;
    QPainterPath m_path;
};
