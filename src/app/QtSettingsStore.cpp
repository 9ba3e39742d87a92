// SPDX-License-Identifier: Apache-2.0
#include "app/QtSettingsStore.h"

namespace zov::app {
namespace {

QString KeyOf(std::string_view section, std::string_view value)
{
    return QString::fromUtf8(section.data(), static_cast<int>(section.size())) + QLatin1Char('/') +
           QString::fromUtf8(value.data(), static_cast<int>(value.size()));
}

} // namespace

CQtSettingsStore::CQtSettingsStore(QSettings& settings)
    : m_settings(settings)
{
}

std::optional<std::string> CQtSettingsStore::Text(std::string_view section,
                                                  std::string_view value) const
{
    const QVariant stored = m_settings.value(KeyOf(section, value));
    if (!stored.isValid()) {
        return std::nullopt;
    }
    // A text with commas comes back from a settings file as a list when somebody edited it by hand.
    return stored.toStringList().join(QStringLiteral(", ")).toStdString();
}

std::optional<std::int64_t> CQtSettingsStore::Integer(std::string_view section,
                                                      std::string_view value) const
{
    // A settings file keeps no kinds: what reads as an integer is one.
    bool ok = false;
    const std::int64_t number = m_settings.value(KeyOf(section, value)).toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

void CQtSettingsStore::SetText(std::string_view section, std::string_view value,
                               const std::string& text)
{
    m_settings.setValue(KeyOf(section, value), QString::fromStdString(text));
}

void CQtSettingsStore::SetInteger(std::string_view section, std::string_view value,
                                  std::int64_t number)
{
    m_settings.setValue(KeyOf(section, value), static_cast<qlonglong>(number));
}

} // namespace zov::app
