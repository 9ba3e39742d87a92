// SPDX-License-Identifier: Apache-2.0
#include "batch/ColumnTitles.h"

#include "base/Text.h"
#include "batch/CellText.h"

#include <algorithm>
#include <array>
#include <unordered_map>
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
    // Beside a model name of its own, a part number is the maker's.
    {MfgPartNo, kAll, EStrength::Weak, "partnumber partno partnum partnr pn partcode"},
    {Manufacturer, kAll, EStrength::Sure,
     "manufacturer manuf mfg mfr mfgname mfrname manufacturername maker makername make brand "
     "manufacturer1 manufacturerno1 mfg1 mfr1 mfgno1 mfrno1 manufacturers"},
    {Manufacturer, kAll, EStrength::Weak, "vendor vendorname supplier"},
    {Size, kCap, EStrength::Sure,
     "size sizecode casesize casecode case chipsize sizecodeinch casecodein casecodeinch "
     "eiasize eiasizecode eiacode caseeia sizeeia "
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
     "voltageratingdc nominalvoltage volts voltsdc dcratedvoltage dcvoltagerating"},
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

/// A title taken apart into what it names and what may be its unit.
struct SSplitTitle
{
    std::string base;
    std::string_view unit;
    bool bracketed = false;
};

struct SBrackets
{
    std::size_t open = std::string_view::npos;
    std::size_t close = std::string_view::npos;
};

/// The last pair of brackets that closes before `end`.
std::optional<SBrackets> LastBrackets(std::string_view title, std::size_t end)
{
    const std::size_t close = title.substr(0, end).find_last_of(")]}");
    if (close == std::string_view::npos) {
        return std::nullopt;
    }
    const char opening = title[close] == ')' ? '(' : title[close] == ']' ? '[' : '{';
    const std::size_t open = title.rfind(opening, close);
    return open == std::string_view::npos ? std::nullopt : std::optional(SBrackets{open, close});
}

/// "Capacitance, uF", "Voltage in V".
std::optional<SSplitTitle> SplitAtLastWord(std::string_view title)
{
    const std::size_t separator = title.find_last_of(" ,/_");
    if (separator == std::string_view::npos || separator == 0) {
        return std::nullopt;
    }
    std::string_view base = title.substr(0, separator);
    while (!base.empty() && (IsSpace(base.back()) || base.back() == ',')) {
        base.remove_suffix(1);
    }
    if (EndsWithNoCase(base, " in")) {
        base.remove_suffix(3);
    }
    return SSplitTitle{std::string(base), title.substr(separator + 1), false};
}

/// The ways to take a title apart, the likeliest first: "Capacitance (uF)", "DCR (Ohm) max",
/// "Cap [uF] (typ)", "Cap uF (typ)".
std::vector<SSplitTitle> SplitTitle(std::string_view title)
{
    title = TrimCell(title);
    std::vector<SSplitTitle> splits;
    const auto add = [&](std::optional<SSplitTitle> split) {
        if (split && !split->unit.empty()) {
            splits.push_back(*std::move(split));
        }
    };
    const auto last = LastBrackets(title, title.size());
    const bool endsInBracket = last && last->close + 1 == title.size();
    if (!endsInBracket) {
        add(SplitAtLastWord(title));
    }
    std::size_t more = 4; // no title that means something has more brackets
    for (auto pair = last; pair && more-- != 0; pair = LastBrackets(title, pair->open)) {
        std::string base(title.substr(0, pair->open));
        base += title.substr(pair->close + 1);
        const std::size_t inside = pair->open + 1;
        add(SSplitTitle{std::move(base), Trim(title.substr(inside, pair->close - inside)), true});
    }
    if (endsInBracket) {
        add(SplitAtLastWord(Trim(title.substr(0, last->open))));
    }
    return splits;
}

bool IsCurrency(std::string_view word)
{
    constexpr std::array<std::string_view, 6> kWords = {"$",   "USD", "US$",
                                                        "EUR", "GBP", "\xE2\x82\xAC"};
    return std::any_of(kWords.begin(), kWords.end(),
                       [&](std::string_view known) { return EqualsNoCase(known, word); });
}

/// Where a title stands in the table: which row, and how far from the best of that row.
struct SPlace
{
    std::size_t row;
    unsigned place;
};
using CTitleIndex = std::unordered_multimap<std::string_view, SPlace>;

const CTitleIndex& TitleIndex()
{
    static const CTitleIndex kIndex = [] {
        CTitleIndex index;
        for (std::size_t row = 0; row < kTitles.size(); ++row) {
            unsigned place = 0;
            for (const std::string_view key : Split(kTitles[row].keys, ' ')) {
                index.emplace(key, SPlace{row, place++});
            }
        }
        return index;
    }();
    return kIndex;
}

std::optional<STitleUnit> UnitOf(const SSplitTitle& split, EField field)
{
    const EQuantity quantity = InfoOf(field).quantity;
    STitleUnit unit = {.text = split.unit, .exponent = 0, .tolerance = {}};
    if (quantity == EQuantity::None) {
        return std::nullopt;
    }
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

/// True when what stands beside a title's base is a unit of the field, or a currency of a cost.
bool HoldsUnit(const SSplitTitle& split, EField field)
{
    const bool cost = field == ComponentCost || field == MountingCost || field == BomPenaltyCost;
    return UnitOf(split, field).has_value() || (cost && IsCurrency(split.unit));
}

class CRecogniser
{
public:
    CRecogniser(std::span<const std::string_view> titles, ERecordType type)
        : m_used(titles.size())
        , m_type(type)
    {
        for (std::uint32_t i = 0; i < titles.size(); ++i) {
            AddHits(titles[i], i + 1);
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
        for (std::size_t index = 0; index < kTitles.size(); ++index) {
            const STitleRow& row = kTitles[index];
            if (row.strength != strength || (row.types & TypeBit(m_type)) == 0) {
                continue;
            }
            const std::uint32_t column =
                m_found[row.field] == 0 || strength == EStrength::Both ? Best(index) : 0;
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

    struct SHit
    {
        SPlace place;
        std::uint32_t column;
    };

    void AddHits(std::string_view title, std::uint32_t column)
    {
        const std::string full = TitleKey(title);
        const auto [first, last] = TitleIndex().equal_range(full);
        for (auto known = first; known != last; ++known) {
            m_hits.push_back({known->second, column});
        }
        for (const SSplitTitle& split : SplitTitle(title)) {
            const std::string base = TitleKey(split.base);
            const auto [firstBase, lastBase] = TitleIndex().equal_range(base);
            for (auto known = firstBase; known != lastBase; ++known) {
                if (HoldsUnit(split, kTitles[known->second.row].field)) {
                    m_hits.push_back({known->second, column});
                }
            }
        }
    }

    std::uint32_t Best(std::size_t row) const
    {
        const SHit* best = nullptr;
        for (const SHit& hit : m_hits) {
            if (hit.place.row == row && !m_used[hit.column - 1] &&
                (best == nullptr || hit.place.place < best->place.place)) {
                best = &hit;
            }
        }
        return best == nullptr ? 0 : best->column;
    }

    std::vector<SHit> m_hits; ///< in the order of the columns
    std::vector<bool> m_used;
    ERecordType m_type;
    CRecognised m_found;
    unsigned m_sure = 0;
};

} // namespace

std::optional<STitleUnit> UnitInTitle(std::string_view title, EField field)
{
    for (const SSplitTitle& split : SplitTitle(title)) {
        if (const auto unit = UnitOf(split, field)) {
            return unit;
        }
    }
    return std::nullopt;
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
