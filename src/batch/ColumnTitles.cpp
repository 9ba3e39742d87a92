// SPDX-License-Identifier: Apache-2.0
#include "batch/ColumnTitles.h"

#include "base/Text.h"
#include "batch/CellText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace zov::batch {

namespace {

using enum EField;

constexpr unsigned kCap = 1;
constexpr unsigned kInd = 2;
constexpr unsigned kRes = 4;
constexpr unsigned kAll = kCap | kInd | kRes;

enum class EStrength : std::uint8_t
{
    Sure,
    Both, ///< sure, and it feeds the upper and the lower tolerance
    Weak  ///< used for fields that no sure title feeds
};

struct STitleRow
{
    EField field;
    unsigned types;
    EStrength strength;
    std::string_view keys; ///< titles in TitleKey form, the best first, separated by blanks
};

constexpr std::array kTitles = std::to_array<STitleRow>({
    {ModelName, kAll, EStrength::Sure,
     "modelname model modelno modelnumber partnumber partno partnum partnr pn partname "
     "componentmodel "
     "componentname partcode partid"},
    {ModelName, kAll, EStrength::Weak,
     "name part ipn internalpartnumber companypartnumber libraryreference libref libraryref id "
     "itemnumber itemno componentcode stockcode component"},
    {MfgPartNo, kAll, EStrength::Sure,
     "mfgpartno mfgpartnumber mfrpartno mfrpartnumber mpn manufacturerpartnumber "
     "manufacturerpartno manufacturerspartnumber manufpartno manufpartnumber mfgpn mfrpn mfgpart "
     "mfrpart mfrspartnumber manufacturerpart manufacturerpn mfgpartnum manufacturerpartnum "
     "makerpartnumber makerpn vendorpartnumber vendorpartno vendorpn orderingcode ordercode "
     "manupartnr manupartno manupartnumber mfgpartnr mfrpartnr manufacturerpartnr "
     "mpn1 mpnno1 manufacturerpartnumber1 manufacturer1partnumber manufacturerpartno1 mfgpartno1 "
     "mfgpn1 pnno1 pn1"},
    {Manufacturer, kAll, EStrength::Sure,
     "manufacturer manuf mfg mfr mfgname mfrname manufacturername maker makername make brand "
     "manufacturer1 manufacturerno1 mfg1 mfr1 mfgno1 mfrno1 manufacturers"},
    {Manufacturer, kAll, EStrength::Weak, "vendor vendorname supplier"},
    {Size, kCap, EStrength::Sure,
     "size sizecode casesize casecode case chipsize eiasize eiasizecode eiacode caseeia sizeeia "
     "sizeinch sizeenglish package packagesize packagecode packagecase pkg packagetype "
     "packagestyle componentspecification codejeita"},
    {Size, kCap, EStrength::Weak,
     "footprint footprintref footprint1 footprintname pcbfootprint kicadfootprint decal pcbdecal"},
    {SizeUnit, kCap, EStrength::Sure, "unitofsize sizeunit sizeunits sizesystem"},
    {Cnom, kCap, EStrength::Sure,
     "cnom nominalcapacitance capacitancenominal capacitancenom capacitance capacitancevalue "
     "capacity cap capvalue nominalcap capnominal cnominal"},
    {Cnom, kCap, EStrength::Weak, "value nominalvalue val componentvalue ratedvalue c"},
    {Cact, kCap, EStrength::Sure,
     "cact actualcapacitance capacitanceactual effectivecapacitance capacitanceeffective ceff cv "
     "cseries"},
    {Resistance, kCap, EStrength::Sure,
     "resistance esr esrmax esrtyp equivalentseriesresistance seriesresistance rv rs rseries"},
    {Resistance, kInd, EStrength::Sure,
     "resistance dcresistance dcr rdc dcresistancemax dcrmax rdcmax dcresistancetyp dcrtyp rdctyp "
     "maxdcresistance maxdcr dcrohms seriesresistance esr"},
    {Resistance, kRes, EStrength::Sure,
     "resistance resistancevalue nominalresistance resistancenominal rvalue rnom res"},
    {Resistance, kRes, EStrength::Weak, "value nominalvalue val componentvalue ratedvalue"},
    {Resistance, kAll, EStrength::Weak, "r"},
    {Inductance, kCap, EStrength::Sure,
     "inductance esl eslmax esltyp equivalentseriesinductance seriesinductance lv ls lseries"},
    {Inductance, kInd, EStrength::Sure,
     "inductance inductancevalue nominalinductance inductancenominal lnom lvalue ind"},
    {Inductance, kInd, EStrength::Weak, "value nominalvalue val componentvalue ratedvalue"},
    {Inductance, kCap | kInd, EStrength::Weak, "l"},
    {UpperTolerance, kCap, EStrength::Sure,
     "uppertolerance uptolerance toleranceupper toleranceup tolup tolupper uppertol toleranceplus "
     "tolplus plustolerance tolerancepos positivetolerance tolerancehigh tolerancemax "
     "toleranceupperlimit"},
    {LowerTolerance, kCap, EStrength::Sure,
     "lowertolerance lowtolerance tolerancelower tolerancelow tollow tollower lowertol "
     "toleranceminus tolminus minustolerance toleranceneg negativetolerance tolerancemin "
     "tolerancelowerlimit"},
    {UpperTolerance, kCap, EStrength::Both,
     "tolerance tol tolerances capacitancetolerance captolerance captol ctol tolerancecode"},
    {Volt, kCap, EStrength::Sure,
     "volt voltage ratedvoltage voltagerating voltagerated ratedvolt vrated vrating vr wv wvdc "
     "workingvoltage dcvoltage vdc maxvoltage voltagemax voltagedc ratedvoltagedc "
     "voltageratingdc nominalvoltage volts"},
    {Tcc, kCap, EStrength::Sure,
     "tcc temperaturecharacteristic temperaturecharacteristics temperaturecharacteristiccode "
     "tempcharacteristic tempchar tempcharacteristics dielectric dielectrictype dielectriccode "
     "dielectricmaterial temperaturecoefficient tempcoefficient tempcoeff tempco tc "
     "characteristic"},
    {Tcc, kCap, EStrength::Weak, "material"},
    {Preference, kCap, EStrength::Sure, "preference prefer preferred preferencemark"},
    {Comment, kCap, EStrength::Sure, "comment comments remark remarks note notes"},
    {Comment, kCap, EStrength::Weak, "description desc"},
    {ComponentCost, kCap, EStrength::Sure, "componentcost cost unitcost unitprice pricea"},
    {MountingCost, kCap, EStrength::Sure, "mountingcost placementcost assemblycost priceb"},
    {BomPenaltyCost, kCap, EStrength::Sure, "bompenaltycost bompenalty penaltycost pricec"},
    {ModelType, kAll, EStrength::Sure, "modeltype modelkind typeofmodel"},
    {LookupKeyword, kInd | kRes, EStrength::Sure,
     "lookupkeyword lookupkeywords lookup lookupkey keyword keywords"},
    {MaxCurrent, kInd | kRes, EStrength::Sure,
     "maxcurrent maximumcurrent currentmax ratedcurrent currentrating currentrated "
     "ratedcurrentmax imax irated idc idcmax maxdccurrent dccurrent current irms"},
    {MaxCurrent, kInd | kRes, EStrength::Weak, "saturationcurrent currentsaturation isat"},
    {FileName, kAll, EStrength::Sure,
     "filename modelfile sparameterfile sparameterfilename sparameterfiles sparamfile "
     "sparameterdata sparameters sparameter spfile snpfile s2pfile touchstonefile touchstone "
     "spicefile spicefilename circuitfile circuitfilename cktfile cktdef"},
    {FileName, kAll, EStrength::Weak, "file spicemodel"},
    {FilePath, kAll, EStrength::Sure,
     "filepath filefolder filedirectory modelpath modelfolder sparameterpath sparameterfolder "
     "sparameterfilepath"},
    {FilePath, kAll, EStrength::Weak, "path folder directory"},
    {NodeAssignment, kAll, EStrength::Sure,
     "externalnodeassignment nodeassignment seriesshunt seriesorshunt"},
});

unsigned TypeBit(ERecordType type)
{
    return type == ERecordType::Capacitor ? kCap : type == ERecordType::Inductor ? kInd : kRes;
}

/// Letters and digits in lower case; "#" reads as "no", a sign in brackets as its word.
std::string TitleKey(std::string_view title)
{
    std::string key;
    for (std::size_t i = 0; i < title.size(); ++i) {
        const char c = title[i];
        const bool inBrackets = i > 0 && i + 1 < title.size() &&
                                (title[i - 1] == '(' || title[i - 1] == '[') &&
                                (title[i + 1] == ')' || title[i + 1] == ']');
        if (c == '#') {
            key += "no";
        } else if (c == '+') {
            key += "plus";
        } else if (c == '-' && inBrackets) {
            key += "minus";
        } else if (IsDigit(c) || IsAlpha(c)) {
            key += ToLower(c);
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            key += c;
        }
    }
    return key;
}

struct SSplitTitle
{
    std::string_view base;
    std::string_view unit; ///< empty when the title ends in nothing that could be a unit
    bool bracketed = false;
};

SSplitTitle SplitTitle(std::string_view title)
{
    title = TrimCell(title);
    constexpr std::array<std::string_view, 3> kBrackets = {"()", "[]", "{}"};
    for (const std::string_view pair : kBrackets) {
        const std::size_t open = title.ends_with(pair[1]) ? title.rfind(pair[0]) : title.npos;
        if (open != std::string_view::npos) {
            return {Trim(title.substr(0, open)),
                    Trim(title.substr(open + 1, title.size() - open - 2)), true};
        }
    }
    const std::size_t separator = title.find_last_of(" ,/_");
    if (separator == std::string_view::npos || separator == 0) {
        return {title, {}, false};
    }
    std::string_view base = title.substr(0, separator);
    while (!base.empty() && (IsSpace(base.back()) || base.back() == ',')) {
        base.remove_suffix(1);
    }
    if (EndsWithNoCase(base, " in")) {
        base.remove_suffix(3);
    }
    return {base, title.substr(separator + 1), false};
}

bool IsCurrency(std::string_view word)
{
    constexpr std::array<std::string_view, 6> kWords = {"$",   "USD", "US$",
                                                        "EUR", "GBP", "\xE2\x82\xAC"};
    return std::any_of(kWords.begin(), kWords.end(),
                       [&](std::string_view known) { return EqualsNoCase(known, word); });
}

/// Place of a key in a blank-separated list, none when it is not there.
std::optional<unsigned> PlaceIn(std::string_view keys, std::string_view key)
{
    unsigned place = 0;
    for (std::size_t at = 0; at < keys.size(); ++place) {
        const std::size_t end = std::min(keys.find(' ', at), keys.size());
        if (keys.substr(at, end - at) == key) {
            return place;
        }
        at = end + 1;
    }
    return std::nullopt;
}

/// A title with the forms under which it may be known.
struct STitle
{
    std::string full; ///< key of the whole title
    std::string base; ///< key without what may be a unit, empty when there is none
    std::string_view text;
};

STitle MakeTitle(std::string_view text)
{
    const SSplitTitle split = SplitTitle(text);
    return {TitleKey(text), split.unit.empty() ? std::string() : TitleKey(split.base), text};
}

std::optional<unsigned> PlaceOf(const STitle& title, const STitleRow& row)
{
    if (title.full.empty()) {
        return std::nullopt;
    }
    if (const auto place = PlaceIn(row.keys, title.full)) {
        return place;
    }
    if (title.base.empty()) {
        return std::nullopt;
    }
    const bool unit = UnitInTitle(title.text, row.field).has_value();
    const bool currency =
        (row.field == ComponentCost || row.field == MountingCost || row.field == BomPenaltyCost) &&
        IsCurrency(SplitTitle(title.text).unit);
    return unit || currency ? PlaceIn(row.keys, title.base) : std::nullopt;
}

class CRecogniser
{
public:
    CRecogniser(std::span<const std::string_view> titles, ERecordType type)
        : m_used(titles.size())
        , m_type(type)
    {
        m_titles.reserve(titles.size());
        for (const std::string_view title : titles) {
            m_titles.push_back(MakeTitle(title));
        }
    }

    CRecognised Run()
    {
        Pass(EStrength::Sure);
        m_sure = Count();
        Pass(EStrength::Both);
        if (m_found[ModelName] == 0) {
            m_found[ModelName] = m_found[MfgPartNo];
        }
        Pass(EStrength::Weak);
        return m_found;
    }
    [[nodiscard]] unsigned SureCount() const { return m_sure; }
    [[nodiscard]] unsigned Count() const
    {
        unsigned count = 0;
        for (const SFieldInfo& info : Fields()) {
            count += m_found[info.field] != 0 ? 1 : 0;
        }
        return count;
    }

private:
    void Pass(EStrength strength)
    {
        for (const STitleRow& row : kTitles) {
            if (row.strength != strength || (row.types & TypeBit(m_type)) == 0) {
                continue;
            }
            const std::uint32_t column =
                m_found[row.field] == 0 || strength == EStrength::Both ? Best(row) : 0;
            if (column == 0) {
                continue;
            }
            m_used[column - 1] = true;
            Take(row.field, column);
            if (strength == EStrength::Both) {
                Take(LowerTolerance, column);
            }
        }
    }

    void Take(EField field, std::uint32_t column)
    {
        if (m_found[field] == 0) {
            m_found[field] = column;
        }
    }

    std::uint32_t Best(const STitleRow& row) const
    {
        std::uint32_t best = 0;
        unsigned bestPlace = 0;
        for (std::size_t i = 0; i < m_titles.size(); ++i) {
            const auto place = m_used[i] ? std::nullopt : PlaceOf(m_titles[i], row);
            if (place && (best == 0 || *place < bestPlace)) {
                best = static_cast<std::uint32_t>(i + 1);
                bestPlace = *place;
            }
        }
        return best;
    }

    std::vector<STitle> m_titles;
    std::vector<bool> m_used;
    ERecordType m_type;
    CRecognised m_found;
    unsigned m_sure = 0;
};

} // namespace

std::optional<STitleUnit> UnitInTitle(std::string_view title, EField field)
{
    const SSplitTitle split = SplitTitle(title);
    const EQuantity quantity = InfoOf(field).quantity;
    if (split.unit.empty() || quantity == EQuantity::None) {
        return std::nullopt;
    }
    STitleUnit unit = {.text = split.unit, .exponent = 0, .tolerance = {}};
    if (quantity == EQuantity::Tolerance) {
        if (UnitWordExponent(split.unit, EQuantity::Tolerance) == -2) {
            unit.tolerance = {SToleranceUnit::EKind::Percent, -2};
            return unit;
        }
        const auto absolute = FindUnit(EQuantity::Capacitance, split.unit);
        if (!absolute) {
            return std::nullopt;
        }
        unit.tolerance = {SToleranceUnit::EKind::Absolute, absolute->exponent};
        return unit;
    }
    const auto exponent = split.bracketed || FindUnit(quantity, split.unit)
                              ? UnitWordExponent(split.unit, quantity)
                              : std::nullopt;
    if (!exponent) {
        return std::nullopt;
    }
    unit.exponent = *exponent;
    return unit;
}

CRecognised RecogniseTitles(std::span<const std::string_view> titles, ERecordType type)
{
    return CRecogniser(titles, type).Run();
}

unsigned TitleScore(std::span<const std::string_view> cells, ERecordType type)
{
    CRecogniser recogniser(cells, type);
    const CRecognised found = recogniser.Run();
    return found[ModelName] == 0 ? 0 : recogniser.Count() + recogniser.SureCount();
}

} // namespace zov::batch
