// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveCommands.h"

namespace zov::app {
namespace {

constexpr ui::SCommand kCommands[] = {
    {ID_CURVE_OPEN, "OnCurveOpen", "&Open...",
     "Add the curves of files to this set\nOpen curve or Touchstone files", "open", "Ctrl+O"},
    {ID_CURVE_NEW_SET, "OnCurveNewSet", "&New Curve Set", "Begin an empty set\nNew curve set",
     "new", "Ctrl+N"},
    {ID_CURVE_CLOSE_SET, "OnCurveCloseSet", "C&lose Curve Set",
     "Close this set with its curves\nClose curve set", "", "Ctrl+W"},
    {ID_CURVE_SAVE_AS, "OnCurveSaveAs", "&Save Curves As...",
     "Save the selected curves, or all, as a curve file\nSave curves", "save-as", "Ctrl+S"},
    {ID_CURVE_EXPORT_IMAGE, "OnCurveExportImage", "Export &Image...",
     "Save the plot as PNG, SVG or PDF\nExport image", "export", "Ctrl+E"},
    {ID_CURVE_EXPORT_CSV, "OnCurveExportCsv", "Export CS&V...",
     "Save the points of the selected curves, or all, as CSV\nExport CSV", "", ""},
    {ID_CURVE_PRINT, "OnCurvePrint", "&Print...", "Print the plot\nPrint", "", "Ctrl+P"},
    {ID_CURVE_CLOSE, "OnCurveClose", "&Close", "Close this window\nClose", "exit", ""},

    {ID_CURVE_COPY_IMAGE, "OnCurveCopyImage", "&Copy Image",
     "Copy the plot as an image\nCopy image", "copy", "Ctrl+C"},
    {ID_CURVE_COPY_DATA, "OnCurveCopyData", "Copy &Data",
     "Copy the points of the selected curves, or all, as CSV\nCopy data", "", "Ctrl+Shift+C"},
    {ID_CURVE_COPY_MARKERS, "OnCurveCopyMarkers", "Copy &Markers",
     "Copy what the markers read\nCopy markers", "", ""},
    {ID_CURVE_SHOW_ALL, "OnCurveShowAll", "Show &All Curves", "", "", ""},
    {ID_CURVE_HIDE_OTHERS, "OnCurveHideOthers", "Show &Only Selected", "", "", ""},
    {ID_CURVE_RENAME, "OnCurveRename", "R&ename", "Change the text of the legend\nRename", "",
     "F2"},
    {ID_CURVE_REMOVE, "OnCurveRemove", "&Remove Curves",
     "Take the selected curves out of the set\nRemove curves", "delete", "Del"},
    {ID_CURVE_CLEAR_MARKERS, "OnCurveClearMarkers", "Remove All Mar&kers", "", "", ""},
    {ID_CURVE_CALCULATE, "OnCurveCalculate", "Ca&lculate...",
     "Compute a new curve from an expression over these\nCalculate", "convert", "Ctrl+K"},

    {ID_CURVE_VIEW_MAGNITUDE, "OnCurveViewMagnitude", "&Magnitude", "", "", "Ctrl+1"},
    {ID_CURVE_VIEW_DB, "OnCurveViewDb", "&dB", "Magnitude in decibels\ndB", "", "Ctrl+2"},
    {ID_CURVE_VIEW_PHASE, "OnCurveViewPhase", "&Phase", "Phase in degrees\nPhase", "", "Ctrl+3"},
    {ID_CURVE_VIEW_REAL, "OnCurveViewReal", "&Real", "", "", "Ctrl+4"},
    {ID_CURVE_VIEW_IMAGINARY, "OnCurveViewImaginary", "&Imaginary", "", "", "Ctrl+5"},
    {ID_CURVE_VIEW_SMITH, "OnCurveViewSmith", "&Smith",
     "Reflection in the Smith chart; impedances against 50 ohms\nSmith", "", "Ctrl+6"},
    {ID_CURVE_LOG_X, "OnCurveLogX", "Log &x", "Logarithmic x axis\nLogarithmic x", "", "X"},
    {ID_CURVE_LOG_Y, "OnCurveLogY", "Log &y", "Logarithmic y axis\nLogarithmic y", "", "Y"},
    {ID_CURVE_GRID, "OnCurveGrid", "&Grid", "", "", "G"},
    {ID_CURVE_LEGEND, "OnCurveLegend", "&Legend in Plot", "", "", "L"},

    {ID_CURVE_ZOOM_IN, "OnCurveZoomIn", "Zoom I&n", "", "add", "Ctrl++"},
    {ID_CURVE_ZOOM_OUT, "OnCurveZoomOut", "Zoom &Out", "", "", "Ctrl+-"},
    {ID_CURVE_ZOOM_BACK, "OnCurveZoomBack", "Zoom &Back",
     "Back to what was shown before\nZoom back", "previous", "Alt+Left"},
    {ID_CURVE_ZOOM_FORWARD, "OnCurveZoomForward", "Zoom &Forward", "", "next", "Alt+Right"},
    {ID_CURVE_ZOOM_FIT, "OnCurveZoomFit", "S&how All", "Show all of the curves\nShow all", "view",
     "Ctrl+0"},
    {ID_CURVE_MOUSE_ZOOM, "OnCurveMouseZoom", "&Zoom", "The mouse zooms into a rectangle\nZoom",
     "find", "Z"},
    {ID_CURVE_MOUSE_PAN, "OnCurveMousePan", "P&an", "The mouse moves the plot\nPan", "cursor", "P"},
    {ID_CURVE_MOUSE_MARKER, "OnCurveMouseMarker", "Mar&ker",
     "The mouse sets and drags markers\nMarker", "rename", "M"},
    {ID_CURVE_PANE_CURVES, "OnCurvePaneCurves", "Curves", "", "", ""},
    {ID_CURVE_PANE_MARKERS, "OnCurvePaneMarkers", "Markers", "", "", ""},
};

} // namespace

std::span<const ui::SCommand> CurveCommands()
{
    return kCommands;
}

} // namespace zov::app
