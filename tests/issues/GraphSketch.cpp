#include "issues/GraphSketch.h"

#include <rapidcheck.h>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

namespace
{

IssueGraph::Input &named(QList<IssueGraph::Input> &inputs, const QString &id)
{
    for (IssueGraph::Input &input : inputs) {
        if (input.id == id) {
            return input;
        }
    }
    IssueGraph::Input input;
    input.id = input.title = id;
    return inputs.emplace_back(input);
}

} // namespace

QList<IssueGraph::Input> sketchedInputs(const QString &text)
{
    QList<IssueGraph::Input> inputs;
    for (QString word : text.split(u' ', Qt::SkipEmptyParts)) {
        const QChar mark = word.back();
        if (mark == u'!' || mark == u'<' || mark == u'>') {
            word.chop(1);
        }
        if (const QStringList ends = word.split(u'>'); ends.size() == 2) {
            for (const QString &end : ends) {
                if (!end.startsWith(u'?')) {
                    named(inputs, end);
                }
            }
            if (mark != u'<' && !ends[0].startsWith(u'?')) {
                named(inputs, ends[0]).blocks.append({.id = ends[1]});
            }
            if (mark != u'>' && !ends[1].startsWith(u'?')) {
                named(inputs, ends[1]).blockedBy.append({.id = ends[0], .struck = mark == u'!'});
            }
        } else if (const QStringList status = word.split(u'='); status.size() == 2) {
            named(inputs, status[0]).status = status[1];
        } else if (const QStringList milestone = word.split(u'@'); milestone.size() == 2) {
            named(inputs, milestone[0]).milestone = milestone[1];
        } else {
            named(inputs, word);
        }
    }
    return inputs;
}

IssueGraph::Graph sketchedGraph(const QString &text)
{
    return IssueGraph::build(sketchedInputs(text), {}, {});
}

QString anySketch()
{
    const int count = *rc::gen::inRange(1, 14);
    const auto name = [count] { return u'I' + QString::number(*rc::gen::inRange(0, count)); };
    QStringList words;
    for (int relation = *rc::gen::inRange(0, 2 * count); relation > 0; --relation) {
        words.append(name() + u'>' + name() + *rc::gen::element(u""_s, u""_s, u"<"_s, u">"_s, u"!"_s));
    }
    for (int status = *rc::gen::inRange(0, count); status > 0; --status) {
        words.append(name() + *rc::gen::element(u"=done"_s, u"=doing"_s, u""_s));
    }
    return words.join(u' ');
}

} // namespace Vesk::Test
