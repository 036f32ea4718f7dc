// The cells of a Markdown table and the room that they take.
#pragma once

#include <QAbstractTableModel>
#include <QFont>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * A table model whose columns are as wide as their widest cell, up to `widestCell`, and whose rows are as
 * high as their tallest. All of it is measured beforehand, so that a view makes only the cells that are seen.
 */
class MarkdownCells : public QAbstractTableModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(
        QStringList cells MEMBER m_cells WRITE setCells NOTIFY contentChanged) ///< inline HTML, row by row
    Q_PROPERTY(int columns MEMBER m_columns WRITE setColumns NOTIFY contentChanged)
    Q_PROPERTY(QList<int> alignments MEMBER m_alignments NOTIFY contentChanged)
    Q_PROPERTY(QFont font MEMBER m_font WRITE setFont NOTIFY contentChanged)
    Q_PROPERTY(qreal lineHeight MEMBER m_lineHeight WRITE setLineHeight NOTIFY contentChanged)
    Q_PROPERTY(qreal wholeWidth READ wholeWidth NOTIFY contentChanged)
    Q_PROPERTY(qreal wholeHeight READ wholeHeight NOTIFY contentChanged)

public:
    enum Roles { HtmlRole = Qt::UserRole + 1, AlignmentRole, IsHeadRole };

    static constexpr qreal widestCell = 320;
    static constexpr qreal sidePadding = 8;
    static constexpr qreal endPadding = 4;

    using QAbstractTableModel::QAbstractTableModel;

    void classBegin() override { m_complete = false; }
    void componentComplete() override;

    void setCells(const QStringList &cells);
    void setColumns(int columns);
    void setFont(const QFont &font);
    void setLineHeight(qreal lineHeight);

    /** Of the whole table with the lines between its cells. */
    [[nodiscard]] qreal wholeWidth() const;
    [[nodiscard]] qreal wholeHeight() const;
    Q_INVOKABLE [[nodiscard]] qreal columnWidth(int column) const;
    Q_INVOKABLE [[nodiscard]] qreal rowHeight(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void contentChanged();

private:
    void measure();

    QStringList m_cells;
    QList<int> m_alignments;
    int m_columns = 0;
    bool m_complete = true; // else more of it is coming, and measuring waits
    QFont m_font;
    qreal m_lineHeight = 20;
    QList<qreal> m_widths;
    QList<qreal> m_heights;
};

} // namespace Vesk
