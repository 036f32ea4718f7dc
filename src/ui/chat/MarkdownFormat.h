// Inline Markdown as the text items of the timeline take it.
#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Puts colours and fonts into the HTML of a block. They are arguments, so a binding follows the theme. */
class MarkdownFormat : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /** One paragraph with lines at least `lineHeight` high. */
    Q_INVOKABLE static QString paragraph(const QString &html, const QColor &link, const QColor &codeGround,
                                         const QFont &code, qreal lineHeight);
    /** Words that stand behind a heading's, as HTML to be added to its own. */
    Q_INVOKABLE static QString note(const QString &text, const QColor &color, const QFont &font);
    /** The words of inline HTML, for assistive tools. */
    Q_INVOKABLE static QString plainText(const QString &html);
    /** An address as a hint beside its link can show it. */
    Q_INVOKABLE static QString shownAddress(const QString &address);
    /** Code as it was written, with lines at least `lineHeight` high. */
    Q_INVOKABLE static QString codeLines(const QString &text, qreal lineHeight);
    /** The same in the colours of its language; `inks` are those of CodeToken::Kind, in its order. */
    Q_INVOKABLE static QString colouredCode(const QString &text, const QString &language,
                                            const QList<QColor> &inks, qreal lineHeight);
};

} // namespace Vesk
