// The sizes of the version window's parts, which people may change and which are kept.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Preferences;

/** In pixels; all windows share them. */
class VersionMeasures : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(qreal side READ side WRITE setSide NOTIFY changed)
    /** Of the graph's column; 0 as long as nobody has chosen one: then it follows from the lanes. */
    Q_PROPERTY(qreal graph READ graph WRITE setGraph NOTIFY changed)
    Q_PROPERTY(qreal author READ author WRITE setAuthor NOTIFY changed)
    Q_PROPERTY(qreal hash READ hash WRITE setHash NOTIFY changed)
    Q_PROPERTY(qreal date READ date WRITE setDate NOTIFY changed)
    Q_PROPERTY(qreal detail READ detail WRITE setDetail NOTIFY changed)
    Q_PROPERTY(qreal files READ files WRITE setFiles NOTIFY changed)

public:
    explicit VersionMeasures(Preferences &preferences, QObject *parent = nullptr);

    [[nodiscard]] qreal side() const { return value("side", 240); }
    void setSide(qreal side) { setValue("side", side); }
    [[nodiscard]] qreal graph() const { return value("graph", 0); }
    void setGraph(qreal graph) { setValue("graph", graph); }
    [[nodiscard]] qreal author() const { return value("author", 84); }
    void setAuthor(qreal author) { setValue("author", author); }
    [[nodiscard]] qreal hash() const { return value("hash", 76); }
    void setHash(qreal hash) { setValue("hash", hash); }
    [[nodiscard]] qreal date() const { return value("date", 116); }
    void setDate(qreal date) { setValue("date", date); }
    [[nodiscard]] qreal detail() const { return value("detail", 320); }
    void setDetail(qreal detail) { setValue("detail", detail); }
    [[nodiscard]] qreal files() const { return value("files", 248); }
    void setFiles(qreal files) { setValue("files", files); }

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] qreal value(const char *name, qreal fallback) const;
    void setValue(const char *name, qreal value);

    Preferences &m_preferences;
};

} // namespace Vesk
