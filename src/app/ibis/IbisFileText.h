// SPDX-License-Identifier: Apache-2.0
/// The bytes of an IBIS file as a text to edit, and back: lines that were not touched keep their
/// bytes, whatever their line ends and encoding are.
///
///     CIbisFileText file(bytes);
///     edit.Fill(file.Shown(), '|');
///     Save(file.BytesOf(edit.Text()));
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace zov::app {

class CIbisFileText
{
public:
    CIbisFileText() = default;
    explicit CIbisFileText(std::string bytes);

    [[nodiscard]] std::string_view Bytes() const { return m_bytes; }
    /// Lines end in '\n', one for each line of the file as the checker counts them: characters that
    /// would break a line of the editor, such as a lone carriage return, are blanks.
    [[nodiscard]] QString Shown() const;
    /// The bytes of an edited text. Lines before the first and behind the last that differs are as
    /// they were; those between end as most lines do, and are in the file's encoding: UTF-8, or
    /// Latin-1 where the bytes are no UTF-8. A text that Latin-1 can't hold becomes UTF-8 as a
    /// whole.
    [[nodiscard]] std::string BytesOf(const QString& edited) const;
    /// Of the longest line.
    [[nodiscard]] static std::size_t LongestLine(std::string_view bytes);

private:
    [[nodiscard]] std::string_view Body() const;
    [[nodiscard]] std::string Encoded(const QString& lines, bool latin1) const;

    std::string m_bytes;
    bool m_utf8 = true;
    bool m_crLf = false; ///< most lines end so
};

} // namespace zov::app
