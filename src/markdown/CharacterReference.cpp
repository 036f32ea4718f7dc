#include "markdown/CharacterReference_p.h"

#include <QChar>
#include <QLatin1StringView>

#include <algorithm>
#include <array>

namespace Vesk
{
namespace
{

struct Name {
    QLatin1StringView name;
    char16_t character;
};

// Those that people and agents type. Sorted by code unit.
constexpr std::array names {
    Name {QLatin1StringView("Alpha"), u'Α'},     Name {QLatin1StringView("Delta"), u'Δ'},
    Name {QLatin1StringView("Gamma"), u'Γ'},     Name {QLatin1StringView("Lambda"), u'Λ'},
    Name {QLatin1StringView("Omega"), u'Ω'},     Name {QLatin1StringView("Phi"), u'Φ'},
    Name {QLatin1StringView("Pi"), u'Π'},        Name {QLatin1StringView("Psi"), u'Ψ'},
    Name {QLatin1StringView("Sigma"), u'Σ'},     Name {QLatin1StringView("Theta"), u'Θ'},
    Name {QLatin1StringView("alpha"), u'α'},     Name {QLatin1StringView("amp"), u'&'},
    Name {QLatin1StringView("and"), u'∧'},       Name {QLatin1StringView("apos"), u'\''},
    Name {QLatin1StringView("approx"), u'≈'},    Name {QLatin1StringView("asymp"), u'≈'},
    Name {QLatin1StringView("bdquo"), u'„'},     Name {QLatin1StringView("beta"), u'β'},
    Name {QLatin1StringView("bull"), u'•'},      Name {QLatin1StringView("cap"), u'∩'},
    Name {QLatin1StringView("cent"), u'¢'},      Name {QLatin1StringView("check"), u'✓'},
    Name {QLatin1StringView("chi"), u'χ'},       Name {QLatin1StringView("copy"), u'©'},
    Name {QLatin1StringView("cup"), u'∪'},       Name {QLatin1StringView("dArr"), u'⇓'},
    Name {QLatin1StringView("darr"), u'↓'},      Name {QLatin1StringView("deg"), u'°'},
    Name {QLatin1StringView("delta"), u'δ'},     Name {QLatin1StringView("divide"), u'÷'},
    Name {QLatin1StringView("emsp"), u'\u2003'}, Name {QLatin1StringView("ensp"), u'\u2002'},
    Name {QLatin1StringView("epsilon"), u'ε'},   Name {QLatin1StringView("equiv"), u'≡'},
    Name {QLatin1StringView("eta"), u'η'},       Name {QLatin1StringView("euro"), u'€'},
    Name {QLatin1StringView("exist"), u'∃'},     Name {QLatin1StringView("forall"), u'∀'},
    Name {QLatin1StringView("frac12"), u'½'},    Name {QLatin1StringView("gamma"), u'γ'},
    Name {QLatin1StringView("ge"), u'≥'},        Name {QLatin1StringView("gt"), u'>'},
    Name {QLatin1StringView("hArr"), u'⇔'},      Name {QLatin1StringView("harr"), u'↔'},
    Name {QLatin1StringView("hellip"), u'…'},    Name {QLatin1StringView("infin"), u'∞'},
    Name {QLatin1StringView("int"), u'∫'},       Name {QLatin1StringView("isin"), u'∈'},
    Name {QLatin1StringView("kappa"), u'κ'},     Name {QLatin1StringView("lArr"), u'⇐'},
    Name {QLatin1StringView("lambda"), u'λ'},    Name {QLatin1StringView("laquo"), u'«'},
    Name {QLatin1StringView("larr"), u'←'},      Name {QLatin1StringView("ldquo"), u'“'},
    Name {QLatin1StringView("le"), u'≤'},        Name {QLatin1StringView("lsquo"), u'‘'},
    Name {QLatin1StringView("lt"), u'<'},        Name {QLatin1StringView("mdash"), u'—'},
    Name {QLatin1StringView("micro"), u'µ'},     Name {QLatin1StringView("middot"), u'·'},
    Name {QLatin1StringView("minus"), u'−'},     Name {QLatin1StringView("mu"), u'μ'},
    Name {QLatin1StringView("nbsp"), u'\u00A0'}, Name {QLatin1StringView("ndash"), u'–'},
    Name {QLatin1StringView("ne"), u'≠'},        Name {QLatin1StringView("not"), u'¬'},
    Name {QLatin1StringView("notin"), u'∉'},     Name {QLatin1StringView("omega"), u'ω'},
    Name {QLatin1StringView("or"), u'∨'},        Name {QLatin1StringView("para"), u'¶'},
    Name {QLatin1StringView("part"), u'∂'},      Name {QLatin1StringView("phi"), u'φ'},
    Name {QLatin1StringView("pi"), u'π'},        Name {QLatin1StringView("plusmn"), u'±'},
    Name {QLatin1StringView("pound"), u'£'},     Name {QLatin1StringView("prod"), u'∏'},
    Name {QLatin1StringView("quot"), u'"'},      Name {QLatin1StringView("rArr"), u'⇒'},
    Name {QLatin1StringView("radic"), u'√'},     Name {QLatin1StringView("raquo"), u'»'},
    Name {QLatin1StringView("rarr"), u'→'},      Name {QLatin1StringView("rdquo"), u'”'},
    Name {QLatin1StringView("reg"), u'®'},       Name {QLatin1StringView("rho"), u'ρ'},
    Name {QLatin1StringView("rsquo"), u'’'},     Name {QLatin1StringView("sect"), u'§'},
    Name {QLatin1StringView("sigma"), u'σ'},     Name {QLatin1StringView("sub"), u'⊂'},
    Name {QLatin1StringView("sum"), u'∑'},       Name {QLatin1StringView("sup"), u'⊃'},
    Name {QLatin1StringView("tau"), u'τ'},       Name {QLatin1StringView("theta"), u'θ'},
    Name {QLatin1StringView("times"), u'×'},     Name {QLatin1StringView("trade"), u'™'},
    Name {QLatin1StringView("uArr"), u'⇑'},      Name {QLatin1StringView("uarr"), u'↑'},
    Name {QLatin1StringView("yen"), u'¥'},       Name {QLatin1StringView("zwj"), u'\u200D'},
    Name {QLatin1StringView("zwnj"), u'\u200C'},
};

QString decodedNumber(QStringView digits, int base)
{
    constexpr uint last = 0x10FFFF;
    bool ok = false;
    const uint code = digits.toUInt(&ok, base);
    if (!ok || code == 0 || code > last || QChar::isSurrogate(code))
        return QString(QChar(QChar::ReplacementCharacter));
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1);
}

} // namespace

QString decodedReference(QStringView reference)
{
    if (reference.size() < 3 || !reference.startsWith(u'&') || !reference.endsWith(u';'))
        return reference.toString();
    const QStringView body = reference.sliced(1, reference.size() - 2);
    if (body.startsWith(u'#')) {
        const bool hex = body.size() > 1 && (body[1] == u'x' || body[1] == u'X');
        return decodedNumber(body.mid(hex ? 2 : 1), hex ? 16 : 10);
    }
    const auto *const known =
        std::lower_bound(names.begin(), names.end(), body,
                         [](const Name &name, QStringView wanted) { return wanted.compare(name.name) > 0; });
    const bool found = known != names.end() && body == known->name;
    return found ? QString(QChar(known->character)) : reference.toString();
}

} // namespace Vesk
