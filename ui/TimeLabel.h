// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QGlyphRun>
#include <QHash>
#include <QWidget>

// The elapsed time in large light digits. Digits have cells of one width, whatever font the desktop has, so
// that no digit moves when another changes; a text that grows too long for its place is drawn smaller. Only
// the cells that have changed are drawn anew.
class TimeLabel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit TimeLabel(QWidget *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    // Whether the time runs: bright digits, else the grey of labels.
    void setLive(bool live);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    // Shaped once: that costs more than to draw it.
    struct Character {
        double width = 0;
        QGlyphRun shape; // from its left end of the baseline
    };
    // Of the label's font.
    struct Measures {
        QHash<QChar, Character> characters;
        double digitWidth = 0; // of the widest digit
        double overhang = 0; // how far a character may reach beyond its cell; below zero, it stays within
        double capHeight = 0;
        double colonLift = 0;
    };

    void measure();
    void placeCells();
    double scale() const;
    QRect cell(qsizetype i) const;

    QString m_text;
    bool m_live = false;
    Measures m_measures;
    // The distance from the start of the text to each character's cell and to the end, unscaled.
    QList<double> m_edges;
};
