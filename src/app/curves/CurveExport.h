// SPDX-License-Identifier: Apache-2.0
/// Plots as images and on paper.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QImage>
#include <QSizeF>

#include <filesystem>

class QPrinter;
class QwtPlot;

namespace zov::app {

/// As it is on the screen, `scale` times as large.
[[nodiscard]] QImage PlotImage(QwtPlot& plot, double scale = 2.0);

/// By the ending of the path: ".png", ".svg", ".pdf". The file is replaced in one step.
/// Errors: Argument for another ending; Io for a plot without a size; those of the file.
CResult<void> ExportPlot(QwtPlot& plot, const std::filesystem::path& path);

/// On one page, as large as the page allows.
/// Errors: Io when the printer takes nothing, for example a file that can't be written.
CResult<void> PrintPlot(QwtPlot& plot, QPrinter& printer);

} // namespace zov::app
