#include "ui/controls/ThemeTokens.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;

QColor rgb(QRgb value)
{
    return QColor::fromRgb(value);
}

QColor mixed(QRgb from, QRgb towards, qreal share)
{
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return {channel(qRed(from), qRed(towards)), channel(qGreen(from), qGreen(towards)),
            channel(qBlue(from), qBlue(towards))};
}

constexpr qreal hoverShare = 0.06;

ThemeColors darkColors()
{
    ThemeColors c;
    c.canvas = rgb(0x15181D);
    c.panel = rgb(0x1B1F25);
    c.raised = rgb(0x22272F);
    c.mine = rgb(0x22272F);
    c.hover = rgb(0x2A303A);
    c.selected = rgb(0x2D3650);
    c.well = rgb(0x101317);
    c.line = rgb(0x2B313B);
    c.line2 = rgb(0x3A424F);
    c.lineCtl = rgb(0x697384);
    c.text = rgb(0xE7EAF0);
    c.text2 = rgb(0xAEB6C4);
    c.text3 = rgb(0x9BA4B4);
    c.textOff = rgb(0x5F6878);
    c.accent = rgb(0x93A8FF);
    c.accentSoft = rgb(0x232B47);
    c.onAccent = rgb(0xFFFFFF);
    c.accentFill = rgb(0x4A5FD6);
    c.accentHover = mixed(0x4A5FD6, 0xFFFFFF, hoverShare);
    c.success = rgb(0x6CC794);
    c.warning = rgb(0xF0935A);
    c.danger = rgb(0xFF8585);
    c.info = rgb(0x6CC1E8);
    c.wait = rgb(0xF2B84B);
    c.onWait = rgb(0x1E1605);
    c.waitFill = rgb(0xF2B84B);
    c.waitLine = rgb(0x8A6A2B);
    c.successSoft = rgb(0x1A2E26);
    c.warningSoft = rgb(0x35251D);
    c.dangerSoft = rgb(0x3A2126);
    c.infoSoft = rgb(0x182C38);
    c.waitSoft = rgb(0x322A1A);
    c.dangerFill = rgb(0xC93F47);
    c.dangerHover = mixed(0xC93F47, 0xFFFFFF, hoverShare);
    c.gaugeLow = rgb(0x93A8FF);
    c.gaugeWarn = rgb(0xF0935A);
    c.gaugeFull = rgb(0xFF8585);
    c.gaugeReset = rgb(0x9BA4B4);
    c.gaugeTrack = rgb(0x333B47);
    c.shadow = QColor(0, 0, 0, 115);
    c.scrim = QColor(0, 0, 0, 128);
    c.modes = {rgb(0x6CC1E8), rgb(0xAEB6C4), rgb(0x63C5B5), rgb(0x6CC794), rgb(0xC79BF2), rgb(0xFF8585)};
    c.lanes = {rgb(0x61A3E6), rgb(0xE0AF3B), rgb(0xC93F76), rgb(0x59D6FA),
               rgb(0xC48139), rgb(0xBEEDBE), rgb(0x6A6BD6), rgb(0xF7E04F)};
    return c;
}

ThemeColors lightColors()
{
    ThemeColors c;
    c.canvas = rgb(0xFCFCFD);
    c.panel = rgb(0xF3F4F7);
    c.raised = rgb(0xFFFFFF);
    c.mine = rgb(0xEFF1F6);
    c.hover = rgb(0xE8EBF0);
    c.selected = rgb(0xDDE3FB);
    c.well = rgb(0xF5F6F9);
    c.line = rgb(0xE1E4EA);
    c.line2 = rgb(0xCDD2DB);
    c.lineCtl = rgb(0x7E8797);
    c.text = rgb(0x1A1E26);
    c.text2 = rgb(0x475061);
    c.text3 = rgb(0x586274);
    c.textOff = rgb(0xA0A8B5);
    c.accent = rgb(0x3F53C9);
    c.accentSoft = rgb(0xE7EBFD);
    c.onAccent = rgb(0xFFFFFF);
    c.accentFill = rgb(0x4357CF);
    c.accentHover = mixed(0x4357CF, 0x000000, hoverShare);
    c.success = rgb(0x1B7443);
    c.warning = rgb(0xAC4A0C);
    c.danger = rgb(0xBC2A35);
    c.info = rgb(0x14688F);
    c.wait = rgb(0x8A5A00);
    c.onWait = rgb(0x2A1C00);
    c.waitFill = rgb(0xF5BE4F);
    c.waitLine = rgb(0xE0B45A);
    c.successSoft = rgb(0xE3F4EA);
    c.warningSoft = rgb(0xFDEBE0);
    c.dangerSoft = rgb(0xFCE8E9);
    c.infoSoft = rgb(0xE0F1F9);
    c.waitSoft = rgb(0xFFF4DA);
    c.dangerFill = rgb(0xC2303B);
    c.dangerHover = mixed(0xC2303B, 0x000000, hoverShare);
    c.gaugeLow = rgb(0x3F53C9);
    c.gaugeWarn = rgb(0xAC4A0C);
    c.gaugeFull = rgb(0xBC2A35);
    c.gaugeReset = rgb(0x586274);
    c.gaugeTrack = rgb(0xDADEE6);
    c.shadow = QColor(0, 0, 0, 41);
    c.scrim = QColor(0, 0, 0, 128);
    c.modes = {rgb(0x14688F), rgb(0x475061), rgb(0x0F6E64), rgb(0x1B7443), rgb(0x7B3FB3), rgb(0xBC2A35)};
    c.lanes = {rgb(0x33278D), rgb(0x966B27), rgb(0x4F314C), rgb(0x477E88),
               rgb(0x6E1C05), rgb(0x639B77), rgb(0x524A7C), rgb(0x929300)};
    return c;
}

void setPixels(QFont &font, qreal pixels)
{
    const qreal whole = std::round(pixels);
    if (qFuzzyCompare(whole, pixels)) {
        font.setPixelSize(int(whole));
        return;
    }
    // Pixel sizes are whole numbers; a point size reaches the halves.
    const auto *screen = QGuiApplication::primaryScreen();
    const qreal dpi = screen ? screen->logicalDotsPerInchY() : 96.0;
    font.setPointSizeF(pixels * 72.0 / dpi);
}

QFont textFont(qreal pixels, qreal scale, QFont::Weight weight = QFont::Normal)
{
    QFont font;
    font.setFamilies({u"Noto Sans CJK KR"_s, u"Noto Sans"_s, u"Noto Color Emoji"_s});
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(weight);
    setPixels(font, std::round(pixels * scale));
    return font;
}

QFont codeFont(qreal pixels, qreal scale, QFont::Weight weight = QFont::Normal)
{
    QFont font;
    font.setFamilies({u"JetBrains Mono"_s, u"Noto Sans Mono CJK KR"_s, u"Noto Color Emoji"_s});
    font.setStyleHint(QFont::Monospace);
    // Without shaping, != and :: stay the signs that stand in the file.
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setFixedPitch(true);
    font.setWeight(weight);
    setPixels(font, std::round(pixels * scale * 2) / 2);
    return font;
}

} // namespace

const ThemeColors &themeColors(bool dark)
{
    static const ThemeColors darkTheme = darkColors();
    static const ThemeColors lightTheme = lightColors();
    return dark ? darkTheme : lightTheme;
}

ThemeFonts themeFonts(qreal scale)
{
    ThemeFonts f;
    f.pageTitle = textFont(20, scale, QFont::Bold);
    f.issueTitle = textFont(18, scale, QFont::Bold);
    f.section = textFont(14, scale, QFont::Bold);
    f.reading = textFont(14, scale);
    f.readingBold = textFont(14, scale, QFont::Bold);
    f.ui = textFont(13, scale);
    f.uiBold = textFont(13, scale, QFont::Bold);
    f.secondary = textFont(12, scale);
    f.secondaryBold = textFont(12, scale, QFont::Bold);
    f.meta = textFont(11, scale);
    f.metaBold = textFont(11, scale, QFont::Bold);
    f.code = codeFont(12.5, scale);
    f.codeBold = codeFont(12.5, scale, QFont::Bold);
    f.codeSmall = codeFont(12, scale);
    f.codeSmallBold = codeFont(12, scale, QFont::Bold);
    return f;
}

} // namespace Vesk
