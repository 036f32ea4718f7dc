// The one source of colours, fonts and sizes for everything that is drawn.
#pragma once

#include "ui/controls/SystemColorScheme.h"
#include "ui/controls/ThemeTokens.h"

#include <QColor>
#include <QFont>
#include <QJSValue>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace Vesk
{

/** Colours, fonts and measures by name; all of them, the functions too, change live with theme and text size.
 */
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool dark READ dark NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged FINAL)
    Q_PROPERTY(qreal scale READ scale WRITE setScale NOTIFY scaleChanged FINAL)

    Q_PROPERTY(QColor canvas READ canvas NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor panel READ panel NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor raised READ raised NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor mine READ mine NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor hover READ hover NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor selected READ selected NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor well READ well NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor line READ line NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor line2 READ line2 NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor lineCtl READ lineCtl NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor text READ text NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor text2 READ text2 NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor text3 READ text3 NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor textOff READ textOff NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor accent READ accent NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor accentSoft READ accentSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor accentFill READ accentFill NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor accentHover READ accentHover NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor success READ success NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor warning READ warning NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor danger READ danger NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor info READ info NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor wait READ wait NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor onWait READ onWait NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor waitFill READ waitFill NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor waitLine READ waitLine NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor successSoft READ successSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor warningSoft READ warningSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor dangerSoft READ dangerSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor infoSoft READ infoSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor waitSoft READ waitSoft NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor dangerFill READ dangerFill NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor dangerHover READ dangerHover NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor gaugeLow READ gaugeLow NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor gaugeWarn READ gaugeWarn NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor gaugeFull READ gaugeFull NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor gaugeReset READ gaugeReset NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor gaugeTrack READ gaugeTrack NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor shadow READ shadow NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor scrim READ scrim NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffAdded READ diffAdded NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffAddedMark READ diffAddedMark NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffAddedWords READ diffAddedWords NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffRemoved READ diffRemoved NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffRemovedMark READ diffRemovedMark NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffRemovedWords READ diffRemovedWords NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffHunk READ diffHunk NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QColor diffHunkText READ diffHunkText NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QFont pageTitle READ pageTitle NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont issueTitle READ issueTitle NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont section READ section NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont reading READ reading NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont readingBold READ readingBold NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont ui READ ui NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont uiBold READ uiBold NOTIFY scaleChanged FINAL)
    /** A line through it; QML loses the rest of a font of which it sets a part. */
    Q_PROPERTY(QFont uiStruck READ uiStruck NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont secondary READ secondary NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont secondaryBold READ secondaryBold NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont meta READ meta NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont metaBold READ metaBold NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont code READ code NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont codeBold READ codeBold NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont codeSmall READ codeSmall NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont codeSmallBold READ codeSmallBold NOTIFY scaleChanged FINAL)
    Q_PROPERTY(QFont codeEditor READ codeEditor NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal pageTitleLine READ pageTitleLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal issueTitleLine READ issueTitleLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal sectionLine READ sectionLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal readingLine READ readingLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal uiLine READ uiLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal secondaryLine READ secondaryLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal metaLine READ metaLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal codeLine READ codeLine NOTIFY scaleChanged FINAL)
    Q_PROPERTY(qreal codeSmallLine READ codeSmallLine NOTIFY scaleChanged FINAL)

    Q_PROPERTY(QList<QColor> modeColors READ modeColors NOTIFY colorsChanged FINAL)
    Q_PROPERTY(QList<QColor> laneColors READ laneColors NOTIFY colorsChanged FINAL)
    /** Of code: words of the language, strings, numbers, comments, added and removed lines. */
    Q_PROPERTY(QList<QColor> codeInks READ codeInks NOTIFY colorsChanged FINAL)

    Q_PROPERTY(int radius READ radius CONSTANT FINAL)
    Q_PROPERTY(int radiusSmall READ radiusSmall CONSTANT FINAL)
    Q_PROPERTY(int popupFade READ popupFade CONSTANT FINAL)
    Q_PROPERTY(int toastFade READ toastFade CONSTANT FINAL)

public:
    /** The one theme of the process; made at first use, which must come after the QGuiApplication. */
    static Theme &shared();
    static Theme *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    ~Theme() override;

    [[nodiscard]] bool dark() const { return m_dark; }
    [[nodiscard]] const ThemeColors &colors() const { return themeColors(m_dark); }

    /** "system", "light" or "dark"; any other word is taken as "system". */
    [[nodiscard]] QString mode() const { return m_mode; }
    void setMode(const QString &mode);

    /** The text size, 0.8 to 1.6 in steps of 0.1. */
    [[nodiscard]] qreal scale() const { return m_tenths / 10.0; }
    void setScale(qreal scale);
    Q_INVOKABLE void zoomIn();
    Q_INVOKABLE void zoomOut();
    Q_INVOKABLE void zoomReset();

    [[nodiscard]] QColor canvas() const { return colors().canvas; }
    [[nodiscard]] QColor panel() const { return colors().panel; }
    [[nodiscard]] QColor raised() const { return colors().raised; }
    [[nodiscard]] QColor mine() const { return colors().mine; }
    [[nodiscard]] QColor hover() const { return colors().hover; }
    [[nodiscard]] QColor selected() const { return colors().selected; }
    [[nodiscard]] QColor well() const { return colors().well; }
    [[nodiscard]] QColor line() const { return colors().line; }
    [[nodiscard]] QColor line2() const { return colors().line2; }
    [[nodiscard]] QColor lineCtl() const { return colors().lineCtl; }
    [[nodiscard]] QColor text() const { return colors().text; }
    [[nodiscard]] QColor text2() const { return colors().text2; }
    [[nodiscard]] QColor text3() const { return colors().text3; }
    [[nodiscard]] QColor textOff() const { return colors().textOff; }
    [[nodiscard]] QColor accent() const { return colors().accent; }
    [[nodiscard]] QColor accentSoft() const { return colors().accentSoft; }
    [[nodiscard]] QColor onAccent() const { return colors().onAccent; }
    [[nodiscard]] QColor accentFill() const { return colors().accentFill; }
    [[nodiscard]] QColor accentHover() const { return colors().accentHover; }
    [[nodiscard]] QColor success() const { return colors().success; }
    [[nodiscard]] QColor warning() const { return colors().warning; }
    [[nodiscard]] QColor danger() const { return colors().danger; }
    [[nodiscard]] QColor info() const { return colors().info; }
    [[nodiscard]] QColor wait() const { return colors().wait; }
    [[nodiscard]] QColor onWait() const { return colors().onWait; }
    [[nodiscard]] QColor waitFill() const { return colors().waitFill; }
    [[nodiscard]] QColor waitLine() const { return colors().waitLine; }
    [[nodiscard]] QColor successSoft() const { return colors().successSoft; }
    [[nodiscard]] QColor warningSoft() const { return colors().warningSoft; }
    [[nodiscard]] QColor dangerSoft() const { return colors().dangerSoft; }
    [[nodiscard]] QColor infoSoft() const { return colors().infoSoft; }
    [[nodiscard]] QColor waitSoft() const { return colors().waitSoft; }
    [[nodiscard]] QColor dangerFill() const { return colors().dangerFill; }
    [[nodiscard]] QColor dangerHover() const { return colors().dangerHover; }
    [[nodiscard]] QColor gaugeLow() const { return colors().gaugeLow; }
    [[nodiscard]] QColor gaugeWarn() const { return colors().gaugeWarn; }
    [[nodiscard]] QColor gaugeFull() const { return colors().gaugeFull; }
    [[nodiscard]] QColor gaugeReset() const { return colors().gaugeReset; }
    [[nodiscard]] QColor gaugeTrack() const { return colors().gaugeTrack; }
    [[nodiscard]] QColor shadow() const { return colors().shadow; }
    [[nodiscard]] QColor scrim() const { return colors().scrim; }
    [[nodiscard]] QColor diffAdded() const { return colors().diffAdded; }
    [[nodiscard]] QColor diffAddedMark() const { return colors().diffAddedMark; }
    [[nodiscard]] QColor diffAddedWords() const { return colors().diffAddedWords; }
    [[nodiscard]] QColor diffRemoved() const { return colors().diffRemoved; }
    [[nodiscard]] QColor diffRemovedMark() const { return colors().diffRemovedMark; }
    [[nodiscard]] QColor diffRemovedWords() const { return colors().diffRemovedWords; }
    [[nodiscard]] QColor diffHunk() const { return colors().diffHunk; }
    [[nodiscard]] QColor diffHunkText() const { return colors().diffHunkText; }

    [[nodiscard]] QFont pageTitle() const { return m_fonts.pageTitle; }
    [[nodiscard]] QFont issueTitle() const { return m_fonts.issueTitle; }
    [[nodiscard]] QFont section() const { return m_fonts.section; }
    [[nodiscard]] QFont reading() const { return m_fonts.reading; }
    [[nodiscard]] QFont readingBold() const { return m_fonts.readingBold; }
    [[nodiscard]] QFont ui() const { return m_fonts.ui; }
    [[nodiscard]] QFont uiBold() const { return m_fonts.uiBold; }
    [[nodiscard]] QFont uiStruck() const { return m_fonts.uiStruck; }
    [[nodiscard]] QFont secondary() const { return m_fonts.secondary; }
    [[nodiscard]] QFont secondaryBold() const { return m_fonts.secondaryBold; }
    [[nodiscard]] QFont meta() const { return m_fonts.meta; }
    [[nodiscard]] QFont metaBold() const { return m_fonts.metaBold; }
    [[nodiscard]] QFont code() const { return m_fonts.code; }
    [[nodiscard]] QFont codeBold() const { return m_fonts.codeBold; }
    [[nodiscard]] QFont codeEditor() const { return m_fonts.codeEditor; }
    [[nodiscard]] QFont codeSmall() const { return m_fonts.codeSmall; }
    [[nodiscard]] QFont codeSmallBold() const { return m_fonts.codeSmallBold; }

    [[nodiscard]] qreal pageTitleLine() const { return px(28); }
    [[nodiscard]] qreal issueTitleLine() const { return px(26); }
    [[nodiscard]] qreal sectionLine() const { return px(20); }
    [[nodiscard]] qreal readingLine() const { return px(22); }
    [[nodiscard]] qreal uiLine() const { return px(20); }
    [[nodiscard]] qreal secondaryLine() const { return px(18); }
    [[nodiscard]] qreal metaLine() const { return px(16); }
    [[nodiscard]] qreal codeLine() const { return px(20); }
    [[nodiscard]] qreal codeSmallLine() const { return px(18); }

    [[nodiscard]] QList<QColor> modeColors() const { return colors().modes; }
    [[nodiscard]] QList<QColor> laneColors() const { return colors().lanes; }
    [[nodiscard]] QList<QColor> codeInks() const
    {
        const auto &c = colors();
        return {c.accent, c.success, c.info, c.text3, c.success, c.danger};
    }

    /** A row height or icon size, scaled and in whole pixels; spaces do not scale. */
    Q_INVOKABLE [[nodiscard]] int px(qreal pixels) const;
    /** The colour of a permission mode, by its number in AgentPermissionMode. */
    Q_INVOKABLE [[nodiscard]] QColor modeColor(int mode) const;
    /** The colour of an issue's status, by its number in IssueStatus::Kind. */
    Q_INVOKABLE [[nodiscard]] QColor statusColor(int kind) const;
    /** The colour of the n-th lane; the eight repeat. */
    Q_INVOKABLE [[nodiscard]] QColor lane(int n) const;
    /** The colour of a gauge that stands at `percent`; `reset` says that its window has begun anew since. */
    Q_INVOKABLE [[nodiscard]] QColor gaugeColor(qreal percent, bool reset = false) const;

    [[nodiscard]] int radius() const { return 6; }
    [[nodiscard]] int radiusSmall() const { return 4; }
    /** Milliseconds. */
    [[nodiscard]] int popupFade() const { return 90; }
    [[nodiscard]] int toastFade() const { return 140; }

Q_SIGNALS:
    void colorsChanged();
    void modeChanged();
    void scaleChanged();

private:
    explicit Theme(QObject *parent);
    void updateDark();
    void setTenths(int tenths);
    void follow(const QString &property) const;

    SystemColorScheme m_system;
    QString m_mode;
    bool m_dark = false;
    int m_tenths = 10;
    ThemeFonts m_fonts;
    QJSValue m_self;
};

} // namespace Vesk
