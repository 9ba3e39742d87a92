// SPDX-License-Identifier: Apache-2.0
/// The settings of the engine kept by QSettings: per user, a section a group.
#pragma once

#include "core/SettingsStore.h"

#include <QSettings>

namespace zov::app {

class CQtSettingsStore final : public ISettingsStore
{
public:
    /// Keeps to `settings`, which outlives it.
    explicit CQtSettingsStore(QSettings& settings);

    [[nodiscard]] std::optional<std::string> Text(std::string_view section,
                                                  std::string_view value) const override;
    [[nodiscard]] std::optional<std::int64_t> Integer(std::string_view section,
                                                      std::string_view value) const override;
    void SetText(std::string_view section, std::string_view value,
                 const std::string& text) override;
    void SetInteger(std::string_view section, std::string_view value, std::int64_t number) override;

private:
    QSettings& m_settings;
};

} // namespace zov::app
