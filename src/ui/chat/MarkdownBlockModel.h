// The blocks of one row's text.
#pragma once

#include "markdown/MarkdownBlocks.h"

#include <QAbstractListModel>
#include <QElapsedTimer>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * Keeps the blocks of a text that may still be growing. While it grows it is read again at most every
 * `parseIntervalMs`, and only blocks that really changed are announced, so a view lays out the last one
 * alone.
 */
class MarkdownBlockModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a timeline row")
    Q_PROPERTY(QString droppedText READ droppedText NOTIFY droppedTextChanged)

public:
    enum Roles {
        KindRole = Qt::UserRole + 1, ///< "paragraph", "heading", "item", "code", "table" or "rule"
        HtmlRole,
        NoteRole, ///< what stands behind a heading's words, in lighter ones
        TextRole,
        LanguageRole,
        MarkerRole, ///< what stands before a list item: a bullet, "3." or nothing
        TaskRole,   ///< "open" or "done" for an item that is ticked off, else empty
        LevelRole,
        QuoteDepthRole,
        ListDepthRole,
        TightRole,
        ColumnsRole,
        AlignmentsRole,
        CellsRole,
        DroppedCellsRole, ///< in words, empty when a table is whole
        ContinuesRole,    ///< goes on with the words of the block above
        ShownCodeRole,    ///< as much of code as is drawn
        CodeRestRole,     ///< in words what of it is not, empty when it is whole
        SettledRole,      ///< the block does not grow
        IsLastRole,
    };

    static constexpr int parseIntervalMs = 50; ///< at least: reading takes a tenth of the time at most
    static constexpr int maxCodeLines = 300;   ///< that are drawn
    static constexpr qsizetype maxCodeCharacters = 16'000;

    explicit MarkdownBlockModel(QObject *parent = nullptr);

    /** Takes over the text: at once when it is finished or has not been read for a while, else soon. */
    void setText(const QString &text, bool growing);

    /** Takes over a finished text that was read elsewhere. A model is given its texts in this way or the
     * other. */
    void showRead(const MarkdownBlocks &read);

    /** What a text of extreme size lost, in words; empty for a whole one. */
    [[nodiscard]] QString droppedText() const { return m_droppedText; }

    /** Where in the text the sign between the brackets of this block's task stands; -1 when it is none. */
    [[nodiscard]] qsizetype taskAt(int row) const;

    /** Puts the text of a block on the clipboard. */
    Q_INVOKABLE void copyBlock(int index) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void droppedTextChanged();

private:
    void read();
    void announce(const MarkdownBlocks &read);
    void show(const QList<MarkdownBlock> &blocks);

    QString m_text;
    bool m_growing = false;
    qint64 m_restMs = parseIntervalMs; // before the text is read again
    QList<MarkdownBlock> m_blocks;
    QString m_droppedText;
    QTimer m_timer;
    QElapsedTimer m_sinceRead;
};

} // namespace Vesk
