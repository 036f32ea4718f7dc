#include "ui/chat/MarkdownColumn.h"

#include "ui/chat/TextLinks.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickTextDocument>

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int firstSlice = 60; // blocks: more than a window shows
constexpr int slice = 12;
constexpr qsizetype sliceCharacters = 12'000;
constexpr qreal quoteWidth = 12;

/** What an engine has made of the files of the blocks; it lives as long as the engine. */
class BlockComponents : public QObject
{
public:
    explicit BlockComponents(QQmlEngine *engine)
        : QObject(engine)
    {
        setObjectName(u"markdownBlocks"_s);
    }

    static QQmlComponent *of(QQmlEngine *engine, const QString &file)
    {
        auto *known = static_cast<BlockComponents *>(
            engine->findChild<QObject *>(u"markdownBlocks"_s, Qt::FindDirectChildrenOnly));
        if (!known) {
            known = new BlockComponents(engine);
        }
        auto *&component = known->m_components[file];
        if (!component) {
            component =
                new QQmlComponent(engine, QUrl(u"qrc:/qt/qml/Vesk/Chat/"_s + file + u".qml"_s), known);
        }
        return component;
    }

private:
    QHash<QString, QQmlComponent *> m_components;
};

QString fileFor(const QString &kind)
{
    if (kind == u"item") {
        return u"MarkdownItem"_s;
    }
    if (kind == u"task") {
        return u"MarkdownTask"_s;
    }
    if (kind == u"code") {
        return u"CodeBlock"_s;
    }
    if (kind == u"table") {
        return u"MarkdownTable"_s;
    }
    return kind == u"rule" ? u"MarkdownRule"_s : u"MarkdownWords"_s;
}

/** Looked for at points that lie closer together than a letter is wide and a line is high. */
bool hasLink(QQuickItem *item, const QRectF &area)
{
    const QRectF part = area & item->boundingRect();
    if (item->metaObject()->indexOfMethod("linkAt(double,double)") >= 0) {
        QString link;
        for (qreal y = part.top() + 2; y < part.bottom(); y += 6) {
            for (qreal x = part.left(); x < part.right() && link.isEmpty(); x += 5) {
                QMetaObject::invokeMethod(item, "linkAt", Q_RETURN_ARG(QString, link), Q_ARG(double, x),
                                          Q_ARG(double, y));
            }
        }
        return !link.isEmpty();
    }
    const auto children = item->childItems();
    return std::ranges::any_of(children, [&](auto *child) {
        return child->isVisible() && hasLink(child, item->mapRectToItem(child, area));
    });
}

QQuickItem *textOf(const QQuickItem *block)
{
    return block ? block->property("textItem").value<QQuickItem *>() : nullptr;
}

} // namespace

MarkdownColumn::MarkdownColumn(QQuickItem *parent)
    : QQuickItem(parent)
{
    m_nextSlice.setSingleShot(true);
    m_nextSlice.setInterval(0);
    connect(&m_nextSlice, &QTimer::timeout, this, [this] { build(slice); });
    connect(this, &MarkdownColumn::metricsChanged, this, &MarkdownColumn::rebuild);
}

MarkdownColumn::~MarkdownColumn() = default;

void MarkdownColumn::setBlocks(MarkdownBlockModel *blocks)
{
    if (m_blocks == blocks) {
        return;
    }
    if (m_blocks) {
        disconnect(m_blocks, nullptr, this, nullptr);
    }
    m_blocks = blocks;
    m_limit = shownAtOnce;
    if (m_blocks) {
        connect(m_blocks, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { insertRows(first, last); });
        connect(m_blocks, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { removeRows(first, last); });
        connect(m_blocks, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
                    if (roles != QList<int> {MarkdownBlockModel::IsLastRole}) {
                        updateRows(first.row(), last.row());
                    }
                });
    }
    Q_EMIT blocksChanged();
    rebuild();
}

int MarkdownColumn::hiddenCount() const
{
    return m_blocks ? std::max(m_blocks->rowCount() - m_limit, 0) : 0;
}

void MarkdownColumn::showMore()
{
    m_limit += shownAtOnce;
    m_nextSlice.start();
    Q_EMIT hiddenCountChanged();
}

void MarkdownColumn::componentComplete()
{
    QQuickItem::componentComplete();
    rebuild();
}

void MarkdownColumn::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width()) {
        layOut();
    }
}

void MarkdownColumn::rebuild()
{
    if (!isComponentComplete()) {
        return;
    }
    dropFrom(0);
    build(firstSlice);
    Q_EMIT hiddenCountChanged();
}

void MarkdownColumn::build(int atMost)
{
    if (!m_blocks || !isComponentComplete()) {
        return;
    }
    const int wanted = std::min(m_blocks->rowCount(), m_limit);
    qsizetype characters = 0;
    m_busy = true;
    for (int made = 0; builtCount() < wanted && made < atMost && characters < sliceCharacters; ++made) {
        const int row = builtCount();
        m_built.emplace_back();
        make(m_built.back(), row);
        characters += role(row, MarkdownBlockModel::HtmlRole).toString().size()
            + role(row, MarkdownBlockModel::TextRole).toString().size();
    }
    m_busy = false;
    if (builtCount() < wanted) {
        m_nextSlice.start();
    }
    layOut();
}

void MarkdownColumn::insertRows(int first, int last)
{
    if (first >= builtCount()) {
        if (!m_nextSlice.isActive()) {
            build(firstSlice);
        }
    } else if (last - first >= slice) {
        dropFrom(first);
        build(firstSlice);
    } else {
        m_busy = true;
        for (int row = first; row <= last; ++row) {
            make(*m_built.emplace(m_built.begin() + row), row);
        }
        if (first == 0) {
            measure(m_built[static_cast<size_t>(last) + 1], last + 1);
        }
        m_busy = false;
        dropFrom(m_limit);
        layOut();
    }
    Q_EMIT hiddenCountChanged();
}

void MarkdownColumn::removeRows(int first, int last)
{
    const int end = std::min(last + 1, builtCount());
    if (first < end) {
        for (int row = first; row < end; ++row) {
            discard(m_built[static_cast<size_t>(row)]);
        }
        m_built.erase(m_built.begin() + first, m_built.begin() + end);
    }
    if (first == 0 && builtCount() > 0) {
        measure(m_built.front(), 0);
    }
    layOut();
    if (m_blocks && builtCount() < std::min(m_blocks->rowCount(), m_limit)) {
        m_nextSlice.start();
    }
    Q_EMIT hiddenCountChanged();
}

void MarkdownColumn::measure(Block &block, int row) const
{
    block.kind = kindOf(row);
    const int quotes = role(row, MarkdownBlockModel::QuoteDepthRole).toInt();
    const int lists = role(row, MarkdownBlockModel::ListDepthRole).toInt();
    block.inset = quotes * quoteWidth + lists * m_listIndent;
    if (row == 0 || role(row, MarkdownBlockModel::ContinuesRole).toBool()) {
        block.gap = 0;
    } else if (block.kind == u"heading") {
        block.gap = 14;
    } else {
        block.gap = lists > 0 && role(row, MarkdownBlockModel::TightRole).toBool() ? 3 : 8;
    }
}

void MarkdownColumn::make(Block &block, int row)
{
    auto *engine = qmlEngine(this);
    measure(block, row);
    const int quotes = role(row, MarkdownBlockModel::QuoteDepthRole).toInt();
    const auto create = [&](const QString &file, const QVariantMap &properties) {
        auto *component = BlockComponents::of(engine, file);
        auto *object = component->beginCreate(engine->rootContext());
        auto *item = qobject_cast<QQuickItem *>(object);
        if (!item) {
            qWarning("A block cannot be shown: %s", qPrintable(component->errorString()));
            delete object;
            return item;
        }
        QQmlEngine::setObjectOwnership(item, QQmlEngine::CppOwnership);
        item->setParent(this);
        item->setParentItem(this);
        component->setInitialProperties(item, properties);
        component->completeCreate();
        return item;
    };
    auto properties = propertiesOf(row);
    properties.insert(u"width"_s, std::max(width() - block.inset, 0.0));
    block.item = create(fileFor(block.kind), properties);
    if (quotes > 0) {
        block.bars = create(u"QuoteBars"_s, {{u"count"_s, quotes}});
    }
    if (!block.item) {
        return;
    }
    // Tab goes through the links in this order.
    if (auto *above = row > 0 ? m_built[static_cast<size_t>(row) - 1].item : nullptr) {
        block.item->stackAfter(above);
    } else if (auto *first = childItems().first(); first != block.item) {
        block.item->stackBefore(first);
    }
    connect(block.item, &QQuickItem::heightChanged, this, &MarkdownColumn::layOut);
    if (block.kind == u"code") {
        connect(block.item, SIGNAL(copyRequested()), this, SLOT(onCopyRequested()));
    } else if (block.kind == u"task") {
        connect(block.item, SIGNAL(ticked()), this, SLOT(onTicked()));
    } else if (block.kind == u"table") {
        connect(block.item, SIGNAL(linkChosen(QString, QString)), this, SIGNAL(linkChosen(QString, QString)));
    }
    follow(textOf(block.item), role(row, MarkdownBlockModel::HtmlRole).toString());
}

// Texts without a link, which most are, have nothing to follow.
void MarkdownColumn::follow(QQuickItem *text, const QString &html)
{
    if (!text || !html.contains(u"<a "_s)
        || text->findChild<TextLinks *>(QString(), Qt::FindDirectChildrenOnly)) {
        return;
    }
    auto *links = new TextLinks(text);
    links->setItem(text);
    links->setDocument(text->property("textDocument").value<QQuickTextDocument *>());
    text->setActiveFocusOnTab(true);
    connect(links, &TextLinks::chosenChanged, this, [this, links, text](int start, int end) {
        QMetaObject::invokeMethod(text, "select", Q_ARG(int, start), Q_ARG(int, end));
        setLinkHint(links->address(), text);
    });
    connect(links, &TextLinks::followed, this, [this, text](const QString &address) {
        Q_EMIT linkChosen(address, text->property("html").toString());
    });
    connect(text, SIGNAL(linkActivated(QString)), this, SLOT(onLinkActivated(QString)));
    connect(text, SIGNAL(linkHovered(QString)), this, SLOT(onLinkHovered(QString)));
}

void MarkdownColumn::updateRows(int first, int last)
{
    const int end = std::min(last + 1, builtCount());
    int others = 0;
    for (int row = first; row < end && others <= slice; ++row) {
        others += m_built[static_cast<size_t>(row)].kind != kindOf(row) ? 1 : 0;
    }
    if (others > slice) {
        dropFrom(first);
        build(firstSlice);
        return;
    }
    for (int row = first; row < end; ++row) {
        auto &block = m_built[static_cast<size_t>(row)];
        const bool sameKind = block.item && block.kind == kindOf(row);
        const bool sameQuotes =
            (block.bars != nullptr) == (role(row, MarkdownBlockModel::QuoteDepthRole).toInt() > 0);
        m_busy = true;
        if (!sameKind || !sameQuotes) {
            discard(block);
            make(block, row);
            m_busy = false;
            continue;
        }
        measure(block, row);
        const auto properties = propertiesOf(row);
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            block.item->setProperty(property.key().toLatin1().constData(), property.value());
        }
        m_busy = false;
        follow(textOf(block.item), role(row, MarkdownBlockModel::HtmlRole).toString());
    }
    layOut();
}

void MarkdownColumn::discard(Block &block) const
{
    for (auto *item : {block.item, block.bars}) {
        if (item) {
            item->disconnect(this);
            item->setVisible(false);
            item->deleteLater();
        }
    }
    block = {};
}

void MarkdownColumn::dropFrom(int row)
{
    while (builtCount() > row) {
        discard(m_built.back());
        m_built.pop_back();
    }
}

void MarkdownColumn::layOut()
{
    if (m_busy || !isComponentComplete()) {
        return;
    }
    m_busy = true;
    qreal y = 0;
    bool quotedAbove = false;
    for (const auto &block : m_built) {
        if (!block.item) {
            continue;
        }
        block.item->setWidth(std::max(width() - block.inset, 0.0));
        const qreal top = y + block.gap;
        block.item->setPosition({block.inset, top});
        const qreal blockHeight = std::ceil(block.item->height());
        y = top + blockHeight;
        if (block.bars) {
            const qreal barsTop = quotedAbove ? y - blockHeight - block.gap : top;
            block.bars->setPosition({0, barsTop});
            block.bars->setHeight(y - barsTop);
        }
        quotedAbove = block.bars != nullptr;
    }
    m_busy = false;
    setImplicitHeight(y);
    auto *text = m_built.empty() ? nullptr : textOf(m_built.back().item);
    if (text != m_lastText) {
        m_lastText = text;
        Q_EMIT lastTextChanged();
    }
}

bool MarkdownColumn::hasLinkIn(const QRectF &area) const
{
    return std::ranges::any_of(m_built, [&](const Block &block) {
        return block.item && hasLink(block.item, mapRectToItem(block.item, area));
    });
}

void MarkdownColumn::setLinkHint(const QString &address, QQuickItem *text)
{
    m_linkHint = address;
    m_linkHintItem = text;
    Q_EMIT linkHintChanged();
}

void MarkdownColumn::onLinkActivated(const QString &link)
{
    Q_EMIT linkChosen(link, sender()->property("html").toString());
}

void MarkdownColumn::onLinkHovered(const QString &link)
{
    setLinkHint(link, qobject_cast<QQuickItem *>(sender()));
}

void MarkdownColumn::onCopyRequested()
{
    if (const int row = rowOf(sender()); m_blocks && row >= 0) {
        m_blocks->copyBlock(row);
    }
}

void MarkdownColumn::onTicked()
{
    if (const int row = rowOf(sender()); row >= 0) {
        Q_EMIT ticked(row);
    }
}

int MarkdownColumn::rowOf(const QObject *item) const
{
    const auto found = std::find_if(m_built.begin(), m_built.end(),
                                    [item](const Block &block) { return block.item == item; });
    return found == m_built.end() ? -1 : static_cast<int>(found - m_built.begin());
}

// A task is an item that can be ticked.
QString MarkdownColumn::kindOf(int row) const
{
    const bool task = m_tickable && !role(row, MarkdownBlockModel::TaskRole).toString().isEmpty();
    return task ? u"task"_s : role(row, MarkdownBlockModel::KindRole).toString();
}

QVariant MarkdownColumn::role(int row, int role) const
{
    return m_blocks ? m_blocks->data(m_blocks->index(row), role) : QVariant();
}

QVariantMap MarkdownColumn::propertiesOf(int row) const
{
    using Model = MarkdownBlockModel;
    const auto kind = kindOf(row);
    const bool quoted = role(row, Model::QuoteDepthRole).toInt() > 0;
    if (kind == u"code") {
        return {{u"text"_s, role(row, Model::ShownCodeRole)},
                {u"language"_s, role(row, Model::LanguageRole)},
                {u"rest"_s, role(row, Model::CodeRestRole)},
                {u"settled"_s, role(row, Model::SettledRole)}};
    }
    if (kind == u"table") {
        return {{u"columns"_s, role(row, Model::ColumnsRole)},
                {u"alignments"_s, role(row, Model::AlignmentsRole)},
                {u"cells"_s, role(row, Model::CellsRole)},
                {u"dropped"_s, role(row, Model::DroppedCellsRole)}};
    }
    if (kind == u"rule") {
        return {};
    }
    if (kind == u"task") {
        return {{u"html"_s, role(row, Model::HtmlRole)},
                {u"checked"_s, role(row, Model::TaskRole).toString() == u"done"},
                {u"quoted"_s, quoted}};
    }
    if (kind == u"item") {
        return {{u"html"_s, role(row, Model::HtmlRole)},
                {u"marker"_s, role(row, Model::MarkerRole)},
                {u"task"_s, role(row, Model::TaskRole)},
                {u"quoted"_s, quoted}};
    }
    return {{u"source"_s, role(row, Model::HtmlRole)},
            {u"note"_s, role(row, Model::NoteRole)},
            {u"level"_s, role(row, Model::LevelRole)},
            {u"quoted"_s, quoted}};
}

} // namespace Vesk
