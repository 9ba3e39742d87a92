// SPDX-License-Identifier: Apache-2.0
/// The lines of a Touchstone file, without asking anyone for data.
#pragma once

#include "network/NetworkTypes.h"

#include <span>

namespace zov::network {

/// Adds `text` as comment lines of the user's part: each begins with "!" and three tabs and breaks
/// when it has 80 characters. Nothing when there is nothing but blanks and line ends.
void AppendUserComments(std::string& out, std::string_view text);

/// Each line of the text behind a "!".
void AppendComments(std::string& out, std::string_view text);

/// What the option line and the keywords before the data say.
struct SHeadLines
{
    bool version2 = false;
    EFrequencyUnit unit = EFrequencyUnit::Hz;
    EParameter parameter = EParameter::S;
    EDataFormat format = EDataFormat::Ri;
    EStorage storage = EStorage::Full;
    std::uint32_t frequencies = 0;
    const std::vector<SPort>* ports = nullptr;
};
void AppendHeadLines(std::string& out, const SHeadLines& head);

/// Puts the data lines of one frequency together, in memory that is used again for the next.
class CMatrixText
{
public:
    CMatrixText(std::uint32_t ports, EStorage storage);

    /// @param frequency  in the file's unit
    /// @param values     full matrix of number pairs, row by row
    [[nodiscard]] std::string_view Lines(double frequency, std::span<const TComplex> values);

private:
    char* PutRow(char* out, std::span<const TComplex> row) const;

    std::size_t m_ports;
    EStorage m_storage;
    std::vector<char> m_text;
};

} // namespace zov::network
