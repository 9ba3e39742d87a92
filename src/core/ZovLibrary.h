// SPDX-License-Identifier: Apache-2.0
/// A library: its records in order, and where it was loaded from.
///
///     CZovLibrary library;
///     CZovRcdProps& c = library.Add(ERecordType::Capacitor);
///     c.SetString(EPropId::ModelName, "C_100n");
///     c.SetDouble(EPropId::Cnom, 100e-9);
///     if (CResult<void> saved = SaveLibrary(library, "caps.zov", {}, log); !saved) ...
#pragma once

#include "core/ZovRcdProps.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

class CZovLibrary
{
public:
    CZovLibrary();
    ~CZovLibrary();
    CZovLibrary(CZovLibrary&& other) noexcept;
    CZovLibrary& operator=(CZovLibrary&& other) noexcept;
    CZovLibrary(const CZovLibrary&) = delete;
    CZovLibrary& operator=(const CZovLibrary&) = delete;

    [[nodiscard]] std::size_t Count() const { return m_records.size(); }
    [[nodiscard]] const CZovRcdProps& At(std::size_t index) const { return *m_records[index]; }
    [[nodiscard]] CZovRcdProps& At(std::size_t index) { return *m_records[index]; }
    [[nodiscard]] const std::vector<CZovRcdProps*>& Records() const { return m_records; }
    [[nodiscard]] std::size_t CountOf(ERecordType type) const;

    /// A new record without properties at the end. References stay valid until it is removed.
    CZovRcdProps& Add(ERecordType type);
    /// A copy of a record, of this or another library, at the end.
    CZovRcdProps& AddCopy(const CZovRcdProps& record);
    /// Properties of `target` become those of `source` (same type); its place in the order stays.
    void Replace(CZovRcdProps& target, const CZovRcdProps& source);
    /// Takes a record out; others keep their order. O(count).
    void Remove(const CZovRcdProps& record);
    void Clear();

    /// For edits that can be undone: a record that is taken out keeps its memory here, so that
    /// putting it back, and changing contents with another, cost no memory and move nothing.
    struct SPlace
    {
        std::size_t position = 0;
        CZovRcdProps* record = nullptr;
    };
    /// A copy of a record, of this or another library, in this one's memory and in no place of it.
    CZovRcdProps& MakeLoose(const CZovRcdProps& content);
    /// The memory of another library becomes part of this one's, and its records loose ones of this
    /// one: they keep their address, and nothing they hold is copied. `other` is empty afterwards.
    void Adopt(CZovLibrary&& other);
    /// Two records of this library's memory and of the same type change their properties.
    void Exchange(CZovRcdProps& a, CZovRcdProps& b);
    /// Takes out the records that stand at these places, positions rising. O(count).
    void TakeOut(std::span<const SPlace> places);
    /// Puts records of this library's memory in; each stands at its position afterwards, positions
    /// rising. O(count).
    void PutIn(std::span<const SPlace> places);

    /// First record of that type (Any: of any type) whose name is equal without regard to case, or
    /// null. The index behind it is built on first need and follows every change; not a scan.
    [[nodiscard]] CZovRcdProps* Find(ERecordType type, std::string_view name);
    [[nodiscard]] const CZovRcdProps* Find(ERecordType type, std::string_view name) const;

    /// File it was loaded from or last saved to; empty for one that was never saved.
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    void SetPath(std::filesystem::path path) { m_path = std::move(path); }
    /// File name without folder and extension.
    [[nodiscard]] std::string Name() const;

    /// A number that changes whenever records come, go, or get another name, part number or
    /// keyword; no two libraries of a process share one. For indexes over those texts.
    [[nodiscard]] std::uint64_t SearchStamp() const;

    /// Bytes held for records and texts; for reports.
    [[nodiscard]] std::size_t BytesHeld() const;

    /// For readers: the memory that records are built in.
    [[nodiscard]] CRecordStore& Store() { return *m_store; }
    /// For readers: a record that a CRecordBuilder made in Store().
    void Append(CZovRcdProps* record);
    void Reserve(std::size_t count) { m_records.reserve(count); }

private:
    struct SNameIndex;
    SNameIndex& Index() const;

    std::unique_ptr<CRecordStore> m_store;
    std::vector<CZovRcdProps*> m_records;
    mutable std::unique_ptr<SNameIndex> m_index;
    std::filesystem::path m_path;
};

} // namespace zov
