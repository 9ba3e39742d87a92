// SPDX-License-Identifier: Apache-2.0
/// What the pages of the compose wizard share: fields, and texts on their way to the engine.
#pragma once

#include "base/File.h"

#include <QLineEdit>
#include <QString>

#include <filesystem>
#include <string>

namespace zov::app {

inline std::filesystem::path PathOf(const QString& path)
{
    return TextPath(path.toStdString());
}

inline QString Text(const std::string& text)
{
    return QString::fromStdString(text);
}

/// An empty field; the name is unique in the window.
inline QLineEdit* NewField(const char* objectName, QWidget* parent)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(QLatin1String(objectName));
    return field;
}

} // namespace zov::app
