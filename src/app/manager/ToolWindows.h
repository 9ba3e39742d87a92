// SPDX-License-Identifier: Apache-2.0
/// The windows that the library manager opens beside itself: curves, IBIS editors, the IBIS loader
/// and the compose wizard.
#pragma once

#include "app/ModelFiles.h"
#include "app/curves/GeneralCurveFrm.h"
#include "app/ibis/IbisEditorFrm.h"
#include "base/Sink.h"

#include <QPointer>

namespace zov::app {

class CToolWindows : public QObject
{
    Q_OBJECT

public:
    /// @param owner of the windows; also outlives this object
    /// @param log   outlives the windows
    CToolWindows(QWidget& owner, CLogSink& log);
    ~CToolWindows() override;

    /// The curve frame, made when it is first asked for.
    CUiGeneralCurveFrm& Curves();
    /// Asks for files and shows their curves.
    void OpenCurveFiles();
    /// The editor that shows a file, or one that shows none; an empty path brings any to the front.
    CIbisEditorFrm& IbisEditor(const QString& path);
    /// Asks for a file and shows it with what the checker says.
    void CheckIbis();
    void LoadIbis(const QString& path = {});
    void ComposeIbis();
    /// Opens a file that a record names in the window for its kind; false when there is none.
    bool Open(const QString& path);
    /// Closes the windows. Edited texts are asked about; false: the user wants to go on with one.
    bool MayClose();

private:
    QWidget& m_owner;
    CLogSink& m_log;
    QPointer<CUiGeneralCurveFrm> m_curves;
    std::vector<QPointer<CIbisEditorFrm>> m_editors;
    CModelFileOpener m_opener;
};

} // namespace zov::app
