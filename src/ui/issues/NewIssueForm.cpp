#include "ui/issues/NewIssueForm.h"

#include "base/Text.h"
#include "issues/FileNameSlug.h"
#include "issues/IssueCells.h"
#include "issues/IssueScaffold.h"

#include <QFileInfo>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

bool isField(const QString &name, const QStringList &keys)
{
    return keys.contains(name, Qt::CaseInsensitive);
}

QString sourceWord(IssueNumbering::Source source)
{
    switch (source) {
    case IssueNumbering::Source::Files:
        return u"파일"_s;
    case IssueNumbering::Source::Board:
        return u"보드"_s;
    case IssueNumbering::Source::References:
        return u"글에 언급된 번호"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

void NewIssueForm::setView(IssuesView *view)
{
    m_view = view;
    m_view->reload();
    m_context = IssueCreateContext::of(m_view->store());
    m_prefix = m_context.survey.prefix.isEmpty() ? IssueScaffold::suggestedKey(m_view->store().cwd())
                                                 : m_context.survey.prefix;
    m_number = u"%1"_s.arg(m_context.survey.next, m_context.survey.digits, 10, QChar(u'0'));
    if (const auto key = m_context.fields.key(IssueKeys::status());
        key && !m_context.fields.status().has_value()) {
        m_values.insert(*key, IssueStatus {IssueStatus::Kind::Todo}.written());
    }
    Q_EMIT viewChanged();
    Q_EMIT changed();
}

void NewIssueForm::setNumber(const QString &number)
{
    if (m_number != number) {
        m_number = number;
        Q_EMIT changed();
    }
}

std::optional<qint64> NewIssueForm::parsedNumber() const
{
    bool fine = false;
    const qint64 number = m_number.trimmed().toLongLong(&fine);
    return fine && number >= 0 ? std::optional(number) : std::nullopt;
}

QString NewIssueForm::id() const
{
    const auto number = parsedNumber();
    return number ? IssueNumbering::format(m_prefix, *number, m_context.survey.digits) : QString();
}

QString NewIssueForm::numberOrigin() const
{
    const auto source = m_context.survey.maxSource();
    return source ? u"가장 큰 번호 %1 다음 (%2)"_s.arg(
               IssueNumbering::format(m_prefix, source->number, m_context.survey.digits),
               sourceWord(source->source))
                  : u"첫 번호"_s;
}

QString NewIssueForm::numberProblem() const
{
    const auto number = parsedNumber();
    if (!number) {
        return u"번호는 숫자로 적습니다"_s;
    }
    return m_context.survey.used.contains(*number) ? u"이미 쓰인 번호"_s : QString();
}

QString NewIssueForm::numberHint() const
{
    const auto number = parsedNumber();
    return number && m_context.survey.isMentionedOnly(*number) ? u"언급만 된 번호"_s : QString();
}

void NewIssueForm::setTitle(const QString &title)
{
    if (m_title != title) {
        m_title = title;
        Q_EMIT changed();
    }
}

QString NewIssueForm::fileName() const
{
    const QString issue = id();
    return issue.isEmpty() ? QString() : IssueTemplate::fileName(issue, FileNameSlug::slug(m_title));
}

QString NewIssueForm::fileProblem() const
{
    const QString name = fileName();
    if (name.isEmpty() || !m_view) {
        return {};
    }
    const QFileInfo file(m_view->folderPath() + u'/' + name);
    return m_context.takenNames.contains(name.toLower()) || file.exists() || file.isSymLink()
        ? IssueWrite::nameTakenText()
        : QString();
}

QStringList NewIssueForm::fieldNames() const
{
    QStringList names;
    for (const auto &keys :
         {IssueKeys::status(), IssueKeys::milestone(), IssueKeys::area(), IssueKeys::priority(),
          IssueKeys::estimate(), IssueKeys::recommendedModel(), IssueKeys::recommendedEffort()}) {
        if (const auto key = m_context.fields.key(keys)) {
            names.append(*key);
        }
    }
    return names;
}

QString NewIssueForm::templateOrigin() const
{
    switch (m_context.skeleton.origin) {
    case IssueTemplate::Origin::Readme:
        return u"틀: 이 폴더의 README.md"_s;
    case IssueTemplate::Origin::Existing:
        return u"틀: 있는 이슈들에서 배움"_s;
    case IssueTemplate::Origin::Builtin:
        return u"틀: 기본"_s;
    }
    Q_UNREACHABLE();
}

bool NewIssueForm::canCreate() const
{
    return m_view && !m_title.trimmed().isEmpty() && numberProblem().isEmpty() && fileProblem().isEmpty();
}

QStringList NewIssueForm::choices(const QString &field) const
{
    if (isField(field, IssueKeys::status())) {
        QStringList words;
        for (const auto &status : m_context.statuses) {
            words.append(status.written());
        }
        return words;
    }
    if (isField(field, IssueKeys::recommendedModel())) {
        return {u"Opus"_s, u"Fable"_s, u"Sonnet"_s, u"Haiku"_s};
    }
    if (isField(field, IssueKeys::recommendedEffort())) {
        return {u"Low"_s, u"Medium"_s, u"High"_s, u"X-High"_s, u"Max"_s, u"Ultracode"_s};
    }
    return isField(field, IssueKeys::milestone()) ? m_context.milestones
        : isField(field, IssueKeys::area())       ? m_context.areas
        : isField(field, IssueKeys::priority())   ? m_context.priorities
        : isField(field, IssueKeys::estimate())   ? m_context.estimates
                                                  : QStringList();
}

QString NewIssueForm::value(const QString &field) const
{
    return m_values.value(field, m_context.fields.value({field}).value_or(QString()));
}

void NewIssueForm::setValue(const QString &field, const QString &value)
{
    m_values.insert(field, value.simplified());
    Q_EMIT changed();
}

IssueRefRows::Row NewIssueForm::rowOf(const QString &id) const
{
    for (const auto &other : m_context.others) {
        if (other.id == id) {
            return {.id = id, .title = other.title, .status = static_cast<int>(other.status.kind)};
        }
    }
    return {.id = id, .title = {}, .missing = true};
}

void NewIssueForm::showRefs()
{
    const auto rows = [this](const QStringList &ids) {
        QList<IssueRefRows::Row> found;
        for (const auto &each : ids) {
            found.append(rowOf(each));
        }
        return found;
    };
    m_blockedByRows.show(rows(m_blockedBy));
    m_blocksRows.show(rows(m_blocks));
    Q_EMIT changed();
}

void NewIssueForm::addRef(bool waitsFor, const QString &id)
{
    auto &list = waitsFor ? m_blockedBy : m_blocks;
    if (!id.isEmpty() && !list.contains(id)) {
        list.append(id);
        showRefs();
    }
}

void NewIssueForm::removeRef(bool waitsFor, int row)
{
    auto &list = waitsFor ? m_blockedBy : m_blocks;
    if (row >= 0 && row < list.size()) {
        list.removeAt(row);
        showRefs();
    }
}

QString NewIssueForm::markdown() const
{
    QString text = IssueTemplate::replaceHeading(m_context.skeleton.markdown, id(), m_title.simplified());
    const auto set = [&text](const QString &key, const QString &value, bool verbatim) {
        text = IssueCells::setField(text, key, value, verbatim).value_or(text);
    };
    for (const auto &name : fieldNames()) {
        if (!m_values.contains(name)) {
            continue;
        }
        if (isField(name, IssueKeys::status())) {
            set(name, m_context.fields.statusCell().rewritten(m_values.value(name)), true);
        } else {
            set(name, m_values.value(name), false);
        }
    }
    const auto refer = [&](const QStringList &keys, const QStringList &ids) {
        QString cell = m_context.fields.rawValue(keys).value_or(QString());
        for (const auto &each : ids) {
            cell = IssueCells::appendingRef(each, cell);
        }
        if (!ids.isEmpty()) {
            set(m_context.fields.key(keys).value_or(keys.first()), cell, true);
        }
    };
    refer(IssueKeys::blockedBy(), m_blockedBy);
    refer(IssueKeys::blocks(), m_blocks);
    return text;
}

bool NewIssueForm::create()
{
    // Others may have made issues while this was being filled in.
    m_view->reload();
    auto fresh = IssueCreateContext::of(m_view->store());
    m_context.survey = fresh.survey;
    m_context.takenNames = fresh.takenNames;
    if (!canCreate()) {
        Q_EMIT changed();
        return false;
    }
    const QString name = fileName();
    const QString path = m_view->folderPath() + u'/' + name;
    if (const auto problem = m_view->desk().io.create(path, markdown())) {
        m_error = *problem;
        Q_EMIT changed();
        return false;
    }
    m_view->desk().logInfo(u"issue created: "_s + name + u" ("_s + m_view->alias() + u')');
    m_view->noteCreated(path);
    return true;
}

} // namespace Vesk
