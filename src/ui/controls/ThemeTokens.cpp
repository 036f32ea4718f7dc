#include "ui/controls/ThemeTokens.h"

#include <QGuiApplication>
#include <QScreen>

#include <array>
#include <cmath>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;

QColor mixed(QRgb from, QRgb towards, qreal share)
{
    const auto channel = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return {channel(qRed(from), qRed(towards)), channel(qGreen(from), qGreen(towards)),
            channel(qBlue(from), qBlue(towards))};
}

constexpr qreal hoverShare = 0.06;

/** A colour in both themes. */
struct Token {
    QColor ThemeColors::*member;
    QRgb dark;
    QRgb light;
};

constexpr std::array tokens {
    Token {&ThemeColors::canvas, 0x15181D, 0xFCFCFD},
    Token {&ThemeColors::panel, 0x1B1F25, 0xF3F4F7},
    Token {&ThemeColors::raised, 0x22272F, 0xFFFFFF},
    Token {&ThemeColors::mine, 0x22272F, 0xEFF1F6},
    Token {&ThemeColors::hover, 0x2A303A, 0xE8EBF0},
    Token {&ThemeColors::selected, 0x2D3650, 0xDDE3FB},
    Token {&ThemeColors::well, 0x101317, 0xF5F6F9},
    Token {&ThemeColors::line, 0x2B313B, 0xE1E4EA},
    Token {&ThemeColors::line2, 0x3A424F, 0xCDD2DB},
    Token {&ThemeColors::lineCtl, 0x697384, 0x7E8797},
    Token {&ThemeColors::text, 0xE7EAF0, 0x1A1E26},
    Token {&ThemeColors::text2, 0xAEB6C4, 0x475061},
    Token {&ThemeColors::text3, 0x9BA4B4, 0x586274},
    Token {&ThemeColors::textOff, 0x5F6878, 0xA0A8B5},
    Token {&ThemeColors::accent, 0x93A8FF, 0x3F53C9},
    Token {&ThemeColors::accentSoft, 0x232B47, 0xE7EBFD},
    Token {&ThemeColors::onAccent, 0xFFFFFF, 0xFFFFFF},
    Token {&ThemeColors::accentFill, 0x4A5FD6, 0x4357CF},
    Token {&ThemeColors::success, 0x6CC794, 0x1B7443},
    Token {&ThemeColors::warning, 0xF0935A, 0xAC4A0C},
    Token {&ThemeColors::danger, 0xFF8585, 0xBC2A35},
    Token {&ThemeColors::info, 0x6CC1E8, 0x14688F},
    Token {&ThemeColors::wait, 0xF2B84B, 0x8A5A00},
    Token {&ThemeColors::onWait, 0x1E1605, 0x2A1C00},
    Token {&ThemeColors::waitFill, 0xF2B84B, 0xF5BE4F},
    Token {&ThemeColors::waitLine, 0x8A6A2B, 0xE0B45A},
    Token {&ThemeColors::successSoft, 0x1A2E26, 0xE3F4EA},
    Token {&ThemeColors::warningSoft, 0x35251D, 0xFDEBE0},
    Token {&ThemeColors::dangerSoft, 0x3A2126, 0xFCE8E9},
    Token {&ThemeColors::infoSoft, 0x182C38, 0xE0F1F9},
    Token {&ThemeColors::waitSoft, 0x322A1A, 0xFFF4DA},
    Token {&ThemeColors::dangerFill, 0xC93F47, 0xC2303B},
    Token {&ThemeColors::gaugeLow, 0x93A8FF, 0x3F53C9},
    Token {&ThemeColors::gaugeWarn, 0xF0935A, 0xAC4A0C},
    Token {&ThemeColors::gaugeFull, 0xFF8585, 0xBC2A35},
    Token {&ThemeColors::gaugeReset, 0x9BA4B4, 0x586274},
    Token {&ThemeColors::gaugeTrack, 0x333B47, 0xDADEE6},
    Token {&ThemeColors::diffAdded, 0x17301F, 0xE2F5E7},
    Token {&ThemeColors::diffAddedMark, 0x8FDDA8, 0x175E33},
    Token {&ThemeColors::diffAddedWords, 0x24573A, 0xB4E3C2},
    Token {&ThemeColors::diffRemoved, 0x3A1E22, 0xFDE7E8},
    Token {&ThemeColors::diffRemovedMark, 0xFFA3A3, 0x9A1F2A},
    Token {&ThemeColors::diffRemovedWords, 0x6B2F37, 0xF6BFC3},
    Token {&ThemeColors::diffHunk, 0x1B2740, 0xE9EEFC},
    Token {&ThemeColors::diffHunkText, 0x9DB6F5, 0x33489E},
};

constexpr std::array<QRgb, 6> darkModes {0x6CC1E8, 0xAEB6C4, 0x63C5B5, 0x6CC794, 0xC79BF2, 0xFF8585};
constexpr std::array<QRgb, 6> lightModes {0x14688F, 0x475061, 0x0F6E64, 0x1B7443, 0x7B3FB3, 0xBC2A35};
constexpr std::array<QRgb, 8> darkStatuses {0xA3ADBD, 0x93A8FF, 0xFF8585, 0xC79BF2,
                                            0x6CC794, 0x9BA4B4, 0x6CC1E8, 0x9BA4B4};
constexpr std::array<QRgb, 8> lightStatuses {0x566072, 0x3F53C9, 0xBC2A35, 0x7B3FB3,
                                             0x1B7443, 0x586274, 0x14688F, 0x586274};
constexpr std::array<QRgb, 8> darkLanes {0x61A3E6, 0xE0AF3B, 0xC93F76, 0x59D6FA,
                                         0xC48139, 0xBEEDBE, 0x6A6BD6, 0xF7E04F};
constexpr std::array<QRgb, 8> lightLanes {0x33278D, 0x966B27, 0x4F314C, 0x477E88,
                                          0x6E1C05, 0x639B77, 0x524A7C, 0x929300};

template <std::size_t Size>
QList<QColor> colors(const std::array<QRgb, Size> &values)
{
    QList<QColor> list;
    for (const QRgb value : values)
        list.append(QColor::fromRgb(value));
    return list;
}

ThemeColors colorsOf(bool dark)
{
    ThemeColors c;
    for (const Token &token : tokens)
        c.*token.member = QColor::fromRgb(dark ? token.dark : token.light);
    const QRgb towards = dark ? 0xFFFFFF : 0x000000;
    c.accentHover = mixed(c.accentFill.rgb(), towards, hoverShare);
    c.dangerHover = mixed(c.dangerFill.rgb(), towards, hoverShare);
    c.shadow = QColor(0, 0, 0, dark ? 115 : 41);
    c.scrim = QColor(0, 0, 0, 128);
    c.modes = dark ? colors(darkModes) : colors(lightModes);
    c.statuses = dark ? colors(darkStatuses) : colors(lightStatuses);
    c.lanes = dark ? colors(darkLanes) : colors(lightLanes);
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
    static const ThemeColors darkTheme = colorsOf(true);
    static const ThemeColors lightTheme = colorsOf(false);
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
    f.uiStruck = f.ui;
    f.uiStruck.setStrikeOut(true);
    f.secondary = textFont(12, scale);
    f.secondaryBold = textFont(12, scale, QFont::Bold);
    f.meta = textFont(11, scale);
    f.metaBold = textFont(11, scale, QFont::Bold);
    f.code = codeFont(12.5, scale);
    f.codeBold = codeFont(12.5, scale, QFont::Bold);
    f.codeEditor = codeFont(13, scale);
    f.codeSmall = codeFont(12, scale);
    f.codeSmallBold = codeFont(12, scale, QFont::Bold);
    return f;
}

} // namespace Vesk
