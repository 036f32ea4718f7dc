#include "ui/issues/IssueDetail.h"

#include "app/Runtime.h"
#include "base/PoolWork.h"
#include "base/Text.h"
#include "core/UsageRecorder.h"
#include "issues/IssueBoardUpdate.h"
#include "issues/IssueCells.h"
#include "issues/IssueCreateContext.h"
#include "issues/IssueFolder.h"
#include "ui/controls/DesktopOpener.h"
#include "ui/controls/ProjectPalette.h"
#include "ui/controls/SystemBell.h"
#include "ui/issues/IssueText.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QUrl>

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int readAfterMs = 150;
constexpr int readLongAfterMs = 700;
constexpr qsizetype longText = 200'000;
constexpr int reloadAfterMs = 250;
constexpr qsizetype mostChoices = 12;

/** How many characters of `text` are not in `saved`, or that are gone from it. */
qsizetype changedCharacters(const QString &text, const QString &saved)
{
    const auto [head, tail] = IssueText::sameEnds(text, saved);
    const auto &longer = text.size() >= saved.size() ? text : saved;
    return Text::characterCount(longer.mid(head, longer.size() - head - tail));
}

/** Gives `done` what `work` makes of a text: at once, but of a long text by way of the pool. */
template <typename Work, typename Done>
void readApart(IssueDetail *detail, const QString &text, Work work, Done done)
{
    if (text.size() <= longText) {
        done(work());
    } else {
        workOnPool(detail, std::move(work), std::move(done));
    }
}

QString nameOf(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

bool isOneOf(const QString &name, const QStringList &keys)
{
    return keys.contains(name, Qt::CaseInsensitive);
}

} // namespace

IssueDetail::IssueDetail(QObject *parent)
    : QObject(parent)
{
    m_readLater.setSingleShot(true);
    connect(&m_readLater, &QTimer::timeout, this, &IssueDetail::readText);
    m_reloadLater.setSingleShot(true);
    m_reloadLater.setInterval(reloadAfterMs);
    connect(&m_reloadLater, &QTimer::timeout, this, [this] {
        m_view->reload();
        IssueBoardUpdate::automatic(m_view->desk());
    });
}

IssueDetail::~IssueDetail()
{
    close();
    for (const auto &document : m_stranded) {
        document->flushOrEvacuate();
    }
}

void IssueDetail::setView(IssuesView *view)
{
    if (m_view == view) {
        return;
    }
    if (m_view) {
        m_view->disconnect(this);
    }
    m_view = view;
    if (m_view) {
        m_links.setProjectFolder(m_view->projectPath());
        connect(m_view, &IssuesView::selectionChanged, this, &IssueDetail::openSelected);
        connect(m_view, &IssuesView::contentChanged, this, &IssueDetail::readRefs);
        openSelected();
    }
    Q_EMIT viewChanged();
}

void IssueDetail::close()
{
    if (!m_document) {
        return;
    }
    m_view->flushers().withdraw(m_enrolled);
    m_document->disconnect(this);
    const auto farewell = m_document->flushOrEvacuate();
    m_document->stopWatching();
    m_readLater.stop();
    if (!m_document->isDirty()) {
        noteSaved();
    }
    if (!farewell.copy.isEmpty()) {
        m_view->tell(m_parsed.id + u": 저장하지 못한 편집을 사본으로 남겼습니다 — "_s
                     + ProjectPalette::shortenedPath(farewell.copy, QDir::homePath()));
    }
    if (farewell.kept) {
        m_document.release()->deleteLater();
    } else {
        m_view->tell(m_parsed.id
                     + u": 편집을 저장할 곳도 사본을 둘 곳도 없어 이 창에만 남아 있습니다 — 이슈를 다시 열어 "
                       "저장하세요"_s);
        m_stranded.push_back(std::move(m_document));
    }
    m_unsavedSince = {};
}

std::unique_ptr<MarkdownDocumentModel> IssueDetail::documentOf(const QString &path)
{
    const auto stranded =
        std::ranges::find_if(m_stranded, [&](auto &known) { return known->path() == path; });
    if (stranded != m_stranded.end()) {
        auto document = std::move(*stranded);
        m_stranded.erase(stranded);
        m_unsavedSince = QDateTime::currentDateTime();
        return document;
    }
    auto document = std::make_unique<MarkdownDocumentModel>(path);
    auto &log = m_view->runtime().auditLogger();
    document->onLogInfo = [&log](const QString &line) { log.log(AuditEvent::info(line)); };
    document->onLogError = [&log](const QString &line) { log.log(AuditEvent::systemError(line)); };
    document->setExternalActor(u"다듬기 세션의 Claude"_s);
    document->setLastResort(QFileInfo(m_view->runtime().catalogPath()).path() + u"/unsaved"_s);
    document->load();
    return document;
}

void IssueDetail::openSelected()
{
    const QString path = m_view->selectedPath();
    if (m_document && m_document->path() == path) {
        return;
    }
    close();
    if (!path.isEmpty()) {
        m_document = documentOf(path);
        m_document->startWatching();
        m_enrolled = m_view->flushers().enrol(path, [document = m_document.get()] { document->save(false); });
        connect(m_document.get(), &MarkdownDocumentModel::textChanged, this, [this] {
            m_readLater.start(m_document->text().size() > longText ? readLongAfterMs : readAfterMs);
        });
        connect(m_document.get(), &MarkdownDocumentModel::savedTextChanged, this, &IssueDetail::noteSaved);
        connect(m_document.get(), &MarkdownDocumentModel::stateChanged, this, [this] {
            m_view->setSelectionHeld(m_document->isDirty());
            if (m_document->isDirty() != m_unsavedSince.isValid()) {
                m_unsavedSince = m_document->isDirty() ? QDateTime::currentDateTime() : QDateTime();
                noteUnsaved();
            }
        });
    }
    Q_EMIT documentChanged();
    const auto *item = m_view->store().itemAtPath(path);
    if (m_document && m_document->text().size() > longText && item) {
        // Until the text is read, what the list knows of it stands here.
        show({.text = {}, .document = item->doc, .blank = false, .preview = MarkdownBlocks()});
    }
    readText();
}

void IssueDetail::readText()
{
    m_readLater.stop();
    const int reading = ++m_readings;
    if (!m_document) {
        show({.text = {}, .document = {}, .blank = true, .preview = MarkdownBlocks()});
        return;
    }
    const QString text = m_document->text();
    readApart(
        this, text,
        [text, name = nameOf(m_document->path()), preview = m_previewShown && text != m_previewed] {
            return IssueReading::of(text, name, preview);
        },
        [this, reading](const IssueReading &found) {
            if (reading == m_readings) {
                show(found);
            }
        });
}

void IssueDetail::show(const IssueReading &reading)
{
    m_parsed = reading.document;
    m_blank = reading.blank;
    QList<IssueFieldRows::Row> fields;
    for (const auto &field : m_parsed.fields) {
        if (!isOneOf(field.key, IssueKeys::status()) && !isOneOf(field.key, IssueKeys::blockedBy())
            && !isOneOf(field.key, IssueKeys::blocks())) {
            fields.append({field.key, field.value});
        }
    }
    m_fields.show(fields);
    readRefs();
    if (reading.preview) {
        m_previewed = reading.text;
        m_preview.showRead(*reading.preview);
    }
    Q_EMIT parsedChanged();
    noteUnsaved();
}

void IssueDetail::readRefs()
{
    const auto &graph = m_view->store().graph();
    const auto notes = IssueGraph::refNotes(m_parsed.id, graph.problems);
    const auto rows = [&](const QStringList &keys) {
        QList<IssueRefRows::Row> found;
        for (const auto &ref : IssueCells::refDetails(m_parsed.rawValue(keys))) {
            IssueRefRows::Row row {.id = ref.id, .struck = ref.struck, .missing = true};
            row.note = notes.value(ref.id.toLower());
            row.status = static_cast<int>(IssueStatus::Kind::Unset);
            if (const auto *item = m_view->store().itemWithID(ref.id)) {
                row.title = item->doc.title;
                row.status = static_cast<int>(IssueStatus::parse(item->doc.status()).kind);
                row.missing = false;
            } else if (const auto *board = m_view->store().boardRowWithID(ref.id)) {
                row.title = board->title;
                row.status = static_cast<int>(IssueStatus::parse(board->status).kind);
                row.missing = false;
            }
            found.append(row);
        }
        return found;
    };
    m_blockedBy.show(rows(IssueKeys::blockedBy()));
    m_blocks.show(rows(IssueKeys::blocks()));
}

// The list follows when what it shows of the issue has become another.
void IssueDetail::noteSaved()
{
    const QString text = m_document->savedText();
    const QString path = m_document->path();
    readApart(
        this, text, [text, name = nameOf(path)] { return IssueDocument::parse(text, name); },
        [this, path](const IssueDocument &saved) {
            const auto *item = m_view ? m_view->store().itemAtPath(path) : nullptr;
            if (m_view && (!item || item->doc != saved)) {
                m_reloadLater.start();
            }
        });
}

void IssueDetail::setPreviewShown(bool shown)
{
    if (m_previewShown != shown) {
        m_previewShown = shown;
        if (shown && m_view) {
            readText();
        }
        Q_EMIT previewShownChanged();
    }
}

int IssueDetail::statusKind() const
{
    return static_cast<int>(IssueStatus::parse(m_parsed.status()).kind);
}

QString IssueDetail::statusWord() const
{
    return m_parsed.status().value_or(QString());
}

QString IssueDetail::statusNote() const
{
    return m_parsed.statusNote().value_or(QString());
}

QString IssueDetail::fileText() const
{
    if (!m_document) {
        return {};
    }
    const QString root = m_view->projectPath() + u'/';
    const QString &path = m_document->path();
    // Letters that some systems keep apart are shown as the syllables that they are.
    return (path.startsWith(root) ? path.sliced(root.size()) : path).normalized(QString::NormalizationForm_C);
}

void IssueDetail::noteUnsaved()
{
    QString unsaved;
    if (m_document && m_document->isDirty()) {
        unsaved =
            u"미저장 %1자 · %2부터"_s.arg(changedCharacters(m_document->text(), m_document->savedText()))
                .arg(m_unsavedSince.toString(u"HH:mm"_s));
    }
    if (m_unsavedText != unsaved) {
        m_unsavedText = unsaved;
        Q_EMIT unsavedTextChanged();
    }
}

QString IssueDetail::unreadable() const
{
    const auto *item = m_document ? m_view->store().itemAtPath(m_document->path()) : nullptr;
    return item && !m_document->everReadFromDisk() ? item->unreadable : QString();
}

QString IssueDetail::diskText() const
{
    const QString problem = unreadable();
    return problem.isEmpty() ? u"저장됨"_s : problem;
}

QString IssueDetail::tooLongText() const
{
    const qsizetype size = m_document ? m_document->text().size() : 0;
    return size > IssueReading::longestShown
        ? u"%L1자라 여기에서 고치기에는 너무 깁니다. 다른 편집기에서 고치면 이 창이 따라갑니다."_s.arg(size)
        : QString();
}

QString IssueDetail::emptyText() const
{
    if (!m_document || !m_blank) {
        return {};
    }
    const QString problem = unreadable();
    return problem.isEmpty() ? u"본문이 비어 있습니다"_s : problem;
}

bool IssueDetail::canChange()
{
    if (!m_document) {
        return false;
    }
    if (m_document->hasConflict()) {
        m_view->tell(u"파일과 편집 내용이 어긋나 있어 바꾸지 않았습니다 — 먼저 저장하거나 다시 읽으세요."_s);
        return false;
    }
    return true;
}

void IssueDetail::change(const std::optional<QString> &text)
{
    if (!text) {
        m_view->tell(u"이 파일엔 `| 항목 | 값 |` 표가 없어 바꿀 수 없습니다 — 편집에서 표를 추가하세요."_s);
        return;
    }
    m_document->setText(*text);
    m_document->save(false);
    readText();
}

void IssueDetail::setStatus(const QString &word)
{
    if (!canChange()) {
        return;
    }
    if (m_document->isDirty()) {
        m_document->save(true);
    }
    const QString path = m_document->path();
    const QString name = nameOf(path);
    const auto document = IssueDocument::parse(m_document->text(), name);
    const QString key = document.key(IssueKeys::status()).value_or(u"상태"_s);
    const QString before = document.rawValue(IssueKeys::status()).value_or(QString());
    const auto text =
        IssueCells::setField(m_document->text(), key, document.statusCell().rewritten(word), true);
    if (!text) {
        m_view->tell(
            u"이 파일엔 `| 항목 | 값 |` 표가 없어 상태를 바꿀 수 없습니다 — 편집에서 표를 추가하세요."_s);
        SystemBell::ring();
        return;
    }
    if (*text == m_document->text()) {
        return;
    }
    m_document->setText(*text);
    m_document->save(true);
    if (m_document->isDirty()) {
        readText();
        return; // the document says why
    }
    m_view->desk().logInfo(u"issue "_s + document.id + u'=' + word + u": "_s + name + u" ("_s
                           + m_view->alias() + u')');
    UsageRecorder::record(FeatureSignal::IssueStatusChanged);
    m_reloadLater.stop();
    readText();
    m_view->reload();
    IssueBoardUpdate::automatic(m_view->desk());
    m_view->noteStatusChange(
        {path, key, before,
         IssueDocument::parse(*text, name).rawValue(IssueKeys::status()).value_or(QString())},
        word);
}

void IssueDetail::setField(const QString &name, const QString &value)
{
    if (canChange()) {
        change(IssueCells::setField(m_document->text(), name, Text::trimWhitespace(value), false));
    }
}

void IssueDetail::addRef(bool waitsFor, const QString &id)
{
    if (!canChange()) {
        return;
    }
    const auto &keys = waitsFor ? IssueKeys::blockedBy() : IssueKeys::blocks();
    const auto document = IssueDocument::parse(m_document->text(), nameOf(m_document->path()));
    const QString raw = document.rawValue(keys).value_or(QString());
    change(IssueCells::setField(m_document->text(), document.key(keys).value_or(keys.first()),
                                IssueCells::appendingRef(id, raw), true));
}

void IssueDetail::toggleTask(int block)
{
    if (!m_document || m_document->isLocked()) {
        return;
    }
    // What was typed since the preview was read may have moved the box.
    if (m_document->text() != m_previewed) {
        readText();
        return;
    }
    if (const auto text = IssueText::toggledTask(m_previewed, m_preview.taskAt(block))) {
        m_document->setText(*text);
        m_document->save(false);
        readText();
    }
}

QStringList IssueDetail::knownValues(const QString &name) const
{
    const auto context = IssueCreateContext::of(m_view->store());
    const QStringList values = isOneOf(name, IssueKeys::milestone()) ? context.milestones
        : isOneOf(name, IssueKeys::area())                           ? context.areas
        : isOneOf(name, IssueKeys::priority())                       ? context.priorities
        : isOneOf(name, IssueKeys::estimate())                       ? context.estimates
                                                                     : QStringList();
    return values.mid(0, mostChoices);
}

void IssueDetail::readAgain()
{
    if (m_document) {
        m_document->load();
        readText();
    }
}

void IssueDetail::saveNow()
{
    if (m_document && m_document->canSave()) {
        m_document->save(true);
        readText();
    }
}

void IssueDetail::work()
{
    if (m_document) {
        m_view->workOn(m_document->path());
    }
}

void IssueDetail::openOutside(const QString &path)
{
    if (!DesktopOpener::open(QUrl::fromLocalFile(path))) {
        m_view->tell(u"열 프로그램을 찾지 못했습니다: "_s + path);
    }
}

void IssueDetail::openFile()
{
    if (m_document) {
        openOutside(m_document->path());
    }
}

void IssueDetail::openFolder()
{
    openOutside(m_view->folderPath());
}

void IssueDetail::copy(const QString &text, const QString &done)
{
    if (m_document) {
        QGuiApplication::clipboard()->setText(text);
        m_view->report(done);
    }
}

void IssueDetail::copyPath()
{
    copy(m_document ? m_document->path() : QString(), u"경로를 복사했습니다"_s);
}

void IssueDetail::copyId()
{
    copy(issueId(), u"번호를 복사했습니다"_s);
}

void IssueDetail::followLink(const QString &address, const QString &html)
{
    const QString target = QUrl::fromPercentEncoding(address.section(u'#', 0, 0).toUtf8());
    if (m_document && !target.isEmpty() && !target.contains(u"://"_s)) {
        const QDir folder(m_view->folderPath());
        const auto *item = m_view->store().itemAtPath(QDir::cleanPath(folder.absoluteFilePath(target)));
        if (item) {
            m_view->select(item->path);
            return;
        }
    }
    m_links.follow(address, html);
}

} // namespace Vesk
