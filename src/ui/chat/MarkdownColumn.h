// The blocks of a Markdown text on the screen.
#pragma once

#include "ui/chat/MarkdownBlockModel.h"

#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace Vesk
{

/**
 * Lays the blocks of a text out one below the other. Each block is one item of the kind that it needs and no
 * more, for a long conversation makes and drops thousands of them while it is scrolled. A change of one block
 * touches that block alone; a text of many blocks comes in slices, so that the window never waits for it, and
 * what is beyond `shownAtOnce` blocks waits for showMore().
 */
class MarkdownColumn : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::MarkdownBlockModel *blocks READ blocks WRITE setBlocks NOTIFY blocksChanged)
    Q_PROPERTY(qreal listIndent MEMBER m_listIndent NOTIFY metricsChanged) ///< of one list, in pixels
    /** Tasks can be ticked: ticked() is emitted for their blocks. Set before there are blocks. */
    Q_PROPERTY(bool tickable MEMBER m_tickable NOTIFY metricsChanged)
    /** The text that the last block shows: where more will appear. Null when it shows none. */
    Q_PROPERTY(QQuickItem *lastText READ lastText NOTIFY lastTextChanged)
    /** How many blocks wait for showMore(). */
    Q_PROPERTY(int hiddenCount READ hiddenCount NOTIFY hiddenCountChanged)
    /** The address of the link under the pointer or the keyboard, and the text that it stands in. */
    Q_PROPERTY(QString linkHint READ linkHint NOTIFY linkHintChanged)
    Q_PROPERTY(QQuickItem *linkHintItem READ linkHintItem NOTIFY linkHintChanged)

public:
    static constexpr int shownAtOnce = 400;

    explicit MarkdownColumn(QQuickItem *parent = nullptr);
    ~MarkdownColumn() override;

    [[nodiscard]] MarkdownBlockModel *blocks() const { return m_blocks; }
    void setBlocks(MarkdownBlockModel *blocks);
    [[nodiscard]] QQuickItem *lastText() const { return m_lastText; }
    [[nodiscard]] int hiddenCount() const;
    [[nodiscard]] QString linkHint() const { return m_linkHint; }
    [[nodiscard]] QQuickItem *linkHintItem() const { return m_linkHintItem; }
    /** How many blocks have their items. */
    [[nodiscard]] int builtCount() const { return static_cast<int>(m_built.size()); }

    Q_INVOKABLE void showMore();
    /** A link's words stand in this part of the text. */
    Q_INVOKABLE bool hasLinkIn(const QRectF &area) const;

Q_SIGNALS:
    void blocksChanged();
    void metricsChanged();
    void lastTextChanged();
    void hiddenCountChanged();
    void linkHintChanged();
    void linkChosen(const QString &link, const QString &html);
    void ticked(int block);

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private Q_SLOTS:
    void onLinkActivated(const QString &link);
    void onLinkHovered(const QString &link);
    void onCopyRequested();
    void onTicked();

private:
    struct Block {
        QQuickItem *item = nullptr;
        QQuickItem *bars = nullptr; // of the quotes around it
        QString kind;
        qreal inset = 0;
        qreal gap = 0; // above it
    };

    void rebuild();
    void build(int atMost);
    void make(Block &block, int row);
    void measure(Block &block, int row) const; ///< what its place in the text makes of it
    void insertRows(int first, int last);
    void removeRows(int first, int last);
    void follow(QQuickItem *text, const QString &html);
    void updateRows(int first, int last);
    void discard(Block &block) const;
    void dropFrom(int row);
    void layOut();
    void setLinkHint(const QString &address, QQuickItem *text);
    [[nodiscard]] int rowOf(const QObject *item) const;
    [[nodiscard]] QString kindOf(int row) const;
    [[nodiscard]] QVariant role(int row, int role) const;
    [[nodiscard]] QVariantMap propertiesOf(int row) const;

    QPointer<MarkdownBlockModel> m_blocks;
    std::vector<Block> m_built;
    QTimer m_nextSlice;
    QPointer<QQuickItem> m_lastText;
    QString m_linkHint;
    QPointer<QQuickItem> m_linkHintItem;
    qreal m_listIndent = 20;
    int m_limit = shownAtOnce;
    bool m_tickable = false;
    bool m_busy = false; // its own changes call for no new layout
};

} // namespace Vesk
