// SPDX-License-Identifier: Apache-2.0
#include "OrcusPeer.h"

#include "BenchSupport.h"

#include <memory>
#include <orcus/orcus_xlsx.hpp>
#include <orcus/spreadsheet/import_interface.hpp>
#include <string>
#include <vector>

namespace zov::bench {
namespace {

namespace ss = orcus::spreadsheet;

class CStrings final : public ss::iface::import_shared_strings
{
public:
    size_t append(std::string_view text) override { return add(text); }
    size_t add(std::string_view text) override
    {
        m_texts.emplace_back(text);
        return m_texts.size() - 1;
    }
    void set_segment_font(size_t) override {}
    void set_segment_bold(bool) override {}
    void set_segment_italic(bool) override {}
    void set_segment_font_name(std::string_view) override {}
    void set_segment_font_size(double) override {}
    void set_segment_font_color(ss::color_elem_t, ss::color_elem_t, ss::color_elem_t,
                                ss::color_elem_t) override
    {
    }
    void append_segment(std::string_view text) override { m_segment += text; }
    size_t commit_segments() override
    {
        const size_t index = add(m_segment);
        m_segment.clear();
        return index;
    }

private:
    std::vector<std::string> m_texts;
    std::string m_segment;
};

class CSheet final : public ss::iface::import_sheet
{
public:
    std::size_t cells = 0;
    double sum = 0.0;

    void set_auto(ss::row_t, ss::col_t, std::string_view) override { ++cells; }
    void set_string(ss::row_t, ss::col_t, ss::string_id_t) override { ++cells; }
    void set_value(ss::row_t, ss::col_t, double value) override
    {
        ++cells;
        sum += value;
    }
    void set_bool(ss::row_t, ss::col_t, bool) override { ++cells; }
    void set_date_time(ss::row_t, ss::col_t, int, int, int, int, int, double) override { ++cells; }
    void set_format(ss::row_t, ss::col_t, size_t) override {}
    void set_format(ss::row_t, ss::col_t, ss::row_t, ss::col_t, size_t) override {}
    void fill_down_cells(ss::row_t, ss::col_t, ss::row_t) override {}
    ss::range_size_t get_sheet_size() const override { return {1048576, 16384}; }
};

class CResolver final : public ss::iface::import_reference_resolver
{
public:
    /// "B12" as row 11, column 1.
    ss::src_address_t resolve_address(std::string_view address) override
    {
        ss::src_address_t place{};
        for (const char c : address) {
            if (c >= 'A' && c <= 'Z') {
                place.column = place.column * 26 + (c - 'A' + 1);
            } else if (c >= '0' && c <= '9') {
                place.row = place.row * 10 + (c - '0');
            }
        }
        --place.column;
        --place.row;
        return place;
    }
    ss::src_range_t resolve_range(std::string_view) override { return {}; }
};

class CFactory final : public ss::iface::import_factory
{
public:
    CSheet sheet;

    ss::iface::import_shared_strings* get_shared_strings() override { return &m_strings; }
    ss::iface::import_reference_resolver* get_reference_resolver(ss::formula_ref_context_t) override
    {
        return &m_resolver;
    }
    ss::iface::import_sheet* append_sheet(ss::sheet_t, std::string_view) override { return &sheet; }
    ss::iface::import_sheet* get_sheet(std::string_view) override { return &sheet; }
    ss::iface::import_sheet* get_sheet(ss::sheet_t) override { return &sheet; }
    void finalize() override {}

private:
    CStrings m_strings;
    CResolver m_resolver;
};

} // namespace

void Orcus(const char* path)
{
    CFactory factory;
    const CStopwatch watch;
    orcus::orcus_xlsx filter(&factory);
    filter.read_file(path);
    PrintTime("load", watch.Seconds());
    PrintNumber("cells", factory.sheet.cells);
    PrintNumber("sum", factory.sheet.sum);
}

} // namespace zov::bench
