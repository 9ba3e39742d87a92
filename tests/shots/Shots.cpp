// SPDX-License-Identifier: Apache-2.0
#include "Stage.h"
#include "Story.h"
#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignFrm.h"
#include "app/assignment/DlgAssignModel.h"
#include "app/assignment/DlgCreateModel.h"
#include "app/assignment/DlgFindModel.h"
#include "app/curves/CalcDlg.h"
#include "app/curves/GeneralCurveFrm.h"
#include "app/curves/TouchstoneDlg.h"
#include "app/editor/AddModelDlg.h"
#include "app/editor/EditorDlg.h"
#include "app/generator/DlgVendorDecapLibrary.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/generator/GeneratorPage.h"
#include "app/ibis/ComposeWizard.h"
#include "app/ibis/IbisCommands.h"
#include "app/ibis/IbisEditorFrm.h"
#include "app/ibis/IbisLoaderDlg.h"
#include "app/manager/CommandIds.h"
#include "app/manager/HelpWindow.h"
#include "base/File.h"
#include "ibis/IbisLoader.h"
#include "network/TouchstoneReader.h"
#include "ui/Prompt.h"
#include "ui/UiDialog.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace zov::shots {
namespace {

using TWindow = std::unique_ptr<QWidget>;

/// A picture of a dialog by the name of its form.
std::function<TWindow(CStage&)> Form(const char* name)
{
    return [name](CStage& stage) -> TWindow {
        return ui::CDialogForms::Create(QLatin1String(name), &stage.Frame());
    };
}

/// A page of the main frame.
std::function<TWindow(CStage&)> Page(unsigned command)
{
    return [command](CStage& stage) -> TWindow {
        stage.Trigger(command);
        return nullptr;
    };
}

TWindow Units(CStage& stage)
{
    auto dialog =
        ui::CDialogForms::Create(QStringLiteral("dlg_IDD_ZOV_DLG_OPTIONS"), &stage.Frame());
    dialog->findChild<QTabWidget*>(QStringLiteral("ui_IDC_PAGES"))->setCurrentIndex(1);
    return dialog;
}

TWindow Search(CStage& stage)
{
    stage.Trigger(app::ID_NAV_PAGE_SEARCH);
    auto* list = stage.Frame().findChild<app::CModelListView*>(QStringLiteral("SearchModels"));
    list->SearchField().setText(QStringLiteral("0402 Cnom 10nF..1uF"));
    return nullptr;
}

TWindow Help(CStage&)
{
    auto help = std::make_unique<app::CHelpWindow>(app::CHelpWindow::DocumentsFolder(), nullptr);
    help->ShowPage(QStringLiteral("desktop.md"));
    return help;
}

/// The assignment frame over the example board.
std::unique_ptr<app::CAssignFrm> OpenAssignment(CStage& stage, const char* design)
{
    static QSettings layout(QStringLiteral("assignment.ini"), QSettings::IniFormat);
    auto frame = std::make_unique<app::CAssignFrm>(stage.Frame().Session(), layout,
                                                   [](const char*) { return std::nullopt; });
    if (!frame->OnCreate().Ok()) {
        return nullptr;
    }
    frame->show();
    if (design != nullptr) {
        frame->OpenDesign(QLatin1String(design));
    }
    do {
        stage.Settle();
    } while (frame->View().IsBusy());
    return frame;
}

TWindow Assignment(CStage& stage)
{
    auto frame = OpenAssignment(stage, "board.csv");
    frame->View().expand(frame->View().model()->index(0, 0));
    frame->OnIdleUpdateCmdUI();
    return frame;
}

/// One of the other layouts: by commands that are triggered.
std::function<TWindow(CStage&)> AssignmentLayout(std::vector<unsigned> commands)
{
    return [commands](CStage& stage) -> TWindow {
        auto frame = OpenAssignment(stage, "board.csv");
        for (const unsigned command : commands) {
            frame->Actions().Action(command)->trigger();
            stage.Settle();
        }
        frame->OnIdleUpdateCmdUI();
        return frame;
    };
}

TWindow NoDesign(CStage& stage)
{
    return OpenAssignment(stage, nullptr);
}

TWindow Browse(CStage& stage)
{
    return std::make_unique<app::CDlgAssignModel>(
        &stage.Frame().Session(), QStringLiteral("VC-004"), ERecordType::Capacitor, &stage.Frame());
}

TWindow BrowseForSeveral(CStage& stage)
{
    auto dialog = std::make_unique<app::CDlgAssignModelEx>(
        &stage.Frame().Session(),
        QStringList{QStringLiteral("VC-004"), QStringLiteral("KP0603X7R334"),
                    QStringLiteral("TMI6045-1")},
        ERecordType::Any, &stage.Frame());
    dialog->show();
    stage.Settle();
    dialog->findChild<app::CModelListView*>(QStringLiteral("BrowseModels"))->Table().selectRow(2);
    return dialog;
}

TWindow CreateModel(CStage& stage)
{
    return std::make_unique<app::CDlgCreateModel>(
        stage.Frame().Session().ProjectLibrary().get(),
        SDesignComponent{"RPULLUP", {"R1", "R2"}, "", ERecordType::Any, false, false, "10k"},
        &stage.Frame());
}

TWindow FindModel(CStage& stage)
{
    static CModelSearch search;
    auto dialog = std::make_unique<app::CDlgFindModel>(
        app::SFindRequest{&search, stage.Frame().Session().Set().ActiveLibraries(),
                          stage.Frame().Session().Settings().searchOptions,
                          QStringLiteral("KP0402"), ERecordType::Capacitor, app::EFindMode::ByKeys},
        &stage.Frame());
    do {
        stage.Settle();
    } while (dialog->IsSearching());
    return dialog;
}

/// The generator with a part list of the working folder on a tab.
std::function<TWindow(CStage&)> Generate(ERecordType type, const char* parts, const char* mapping)
{
    return [=](CStage& stage) -> TWindow {
        auto dialog =
            std::make_unique<app::CDlgZovGenMain>(&stage.Frame().Session(), &stage.Frame());
        for (const ERecordType other :
             {ERecordType::Capacitor, ERecordType::Inductor, ERecordType::Resistor}) {
            dialog->Page(other).SetSource({}); // what the picture before it left
        }
        app::CGeneratorPage& page = dialog->Page(type);
        dialog->ShowPage(type);
        page.SetSource(QLatin1String(parts));
        page.SetDestination(
            QLatin1String(parts).left(QLatin1String(parts).indexOf(QLatin1Char('.'))) +
            QStringLiteral(".zov"));
        const auto settle = [&] {
            do {
                stage.Settle();
            } while (page.IsBusy());
        };
        settle();
        if (mapping != nullptr) {
            ui::CScriptedAnswers answers;
            answers.ThenPath(QLatin1String(mapping));
            page.findChild<QPushButton*>(QStringLiteral("ui_IDC_MAPPING_LOAD"))->click();
            settle();
        }
        return dialog;
    };
}

/// A part list with faults and doubts, run.
TWindow GenerateFaults(CStage& stage)
{
    static_cast<void>(WriteFileAtomic(
        "faulty.csv", "Part Number,Maker,Size,Capacitance,Voltage,ESR (mOhm),ESL (nH),Model Type\n"
                      "KP0402-104,Kestrel,0402,100nF,16,5,0.4,RLC\n"
                      "KP0603-475,Kestrel,6O3,4u7,10,3,0.5,RLC\n"
                      "KP0805-226,Kestrel,0805,ten,6.3,3,0.6,RLC\n"
                      "KP0805-476,Kestrel,0805,47uF,6.3,,0.6,Lumped\n"
                      "KP0402-104,Kestrel,0402,100F,16,5,0.4,RLC\n"));
    TWindow window = Generate(ERecordType::Capacitor, "faulty.csv", nullptr)(stage);
    window->show();
    window->findChild<QPushButton*>(QStringLiteral("ui_IDC_GENERATE"))->click();
    auto& dialog = static_cast<app::CDlgZovGenMain&>(*window);
    do {
        stage.Settle();
    } while (dialog.IsRunning());
    return window;
}

TWindow VendorList(CStage& stage)
{
    auto dialog = std::make_unique<app::CDlgVendorDecapLibrary>(
        QStringLiteral("vendor/Manufacturer_Decap_Library.txt"), &stage.Frame());
    do {
        stage.Settle();
    } while (dialog->IsBusy());
    return dialog;
}

template <class F>
void Wait(F isDone)
{
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

const QString kExampleFile = QStringLiteral("memory.ibs");

using TCurveFrame = std::unique_ptr<app::CUiGeneralCurveFrm>;

TCurveFrame CurveFrame(CStage& stage, const QStringList& files = {})
{
    auto frame = std::make_unique<app::CUiGeneralCurveFrm>(stage.Frame().Session().Log());
    frame->OpenFiles(files);
    Wait([&] { return !frame->Job().IsRunning(); });
    return frame;
}

TWindow Curves(CStage& stage)
{
    TCurveFrame frame = CurveFrame(stage, {QStringLiteral("decaps.cur")});
    app::CCurvePage& page = frame->Page();
    page.Plot().SetLogX(true);
    page.Plot().SetLogY(true);
    for (const std::size_t point : {1U, 4U}) {
        page.Markers().Add({page.Set().Curves()[0], point});
    }
    return frame;
}

TWindow NoCurves(CStage& stage)
{
    return CurveFrame(stage);
}

/// The elements of a two-port's file, taken as the dialog proposes them.
TCurveFrame SParameters(CStage& stage)
{
    ui::CScriptedAnswers answers;
    answers.ThenDialog([](QDialog& dialog) { dialog.accept(); });
    TCurveFrame frame = CurveFrame(stage, {QStringLiteral("models/KPL2520-2R2.s2p")});
    frame->Page().Plot().SetLogX(true);
    return frame;
}

TWindow Decibel(CStage& stage)
{
    TCurveFrame frame = SParameters(stage);
    frame->Page().SetView(app::ECurveView::Db);
    frame->Page().Markers().Add({frame->Page().Set().Curves()[2], 60});
    return frame;
}

TWindow Smith(CStage& stage)
{
    TCurveFrame frame = SParameters(stage);
    frame->Page().SetView(app::ECurveView::Smith);
    frame->Page().Markers().Add({frame->Page().Set().Curves()[0], 60});
    return frame;
}

TWindow Impedances(CStage& stage)
{
    TCurveFrame frame = CurveFrame(stage);
    std::vector<app::SImpedanceOf> records;
    for (const CZovRcdProps* record : stage.Frame().Session().ProjectLibrary()->Records()) {
        if (records.size() < 5 && record->GetDiscreteModel()) {
            records.push_back({record, {}});
        }
    }
    frame->ShowImpedances(records);
    Wait([&] { return !frame->Job().IsRunning(); });
    return frame;
}

TWindow Touchstone(CStage& stage)
{
    CNullDiag quiet;
    static const auto matrices = network::ReadTouchstone("models/KPL2520-2R2.s2p", quiet);
    auto dialog = std::make_unique<app::CTouchstoneDlg>(
        &stage.Frame(), QStringLiteral("KPL2520-2R2.s2p"), *matrices);
    dialog->findChild<QComboBox*>(QStringLiteral("ui_IDC_MODES"))->setCurrentIndex(2);
    return dialog;
}

TWindow Calculator(CStage& stage)
{
    const TWindow window = Curves(stage);
    app::CCurvePage& page = static_cast<app::CUiGeneralCurveFrm&>(*window).Page();
    auto dialog = std::make_unique<app::CCalcDlg>(
        nullptr, page.Set(), page.Plot().Axes(),
        std::vector<app::SCalcParameter>{{QStringLiteral("k"), QStringLiteral("2")}});
    dialog->findChild<QLineEdit*>(QStringLiteral("ui_IDC_EXPRESSION"))
        ->setText(QStringLiteral("mag(C100n)*k + * 3"));
    Wait([&] { return !dialog->IsComputing(); });
    return dialog;
}

TWindow IbisEditor(CStage& stage)
{
    auto frame = std::make_unique<app::CIbisEditorFrm>(stage.Frame().Session().Log());
    frame->OpenFile(kExampleFile);
    Wait([&] { return frame->IsIdle(); });
    auto* find = frame->findChild<QLineEdit*>(QStringLiteral("FindField"));
    find->setText(QStringLiteral("[Pulldown]"));
    frame->RouteCommand(app::ID_IBIS_FIND_NEXT);
    return frame;
}

TWindow IbisLoader(CStage& stage)
{
    auto dialog = std::make_unique<app::CIBISLoaderDlg>(nullptr, stage.Frame().Session().Log());
    dialog->OpenFile(kExampleFile);
    Wait([&] { return dialog->IsIdle(); });
    return dialog;
}

/// A table of another kind, and what the checker says of a file with faults.
TWindow IbisCurves(CStage& stage)
{
    TWindow window = IbisEditor(stage);
    auto& frame = static_cast<app::CIbisEditorFrm&>(*window);
    frame.findChild<QLineEdit*>(QStringLiteral("FindField"))
        ->setText(QStringLiteral("[Rising Waveform]"));
    frame.RouteCommand(app::ID_IBIS_FIND_NEXT);
    return window;
}

TWindow IbisReport(CStage& stage)
{
    QFile source(kExampleFile);
    QFile faulty(QStringLiteral("faulty.ibs"));
    if (!source.open(QIODevice::ReadOnly) || !faulty.open(QIODevice::WriteOnly)) {
        return nullptr;
    }
    faulty.write(source.readAll()
                     .replace("[Manufacturer]", "[Maker]")
                     .replace("memory.ibs", "other.ibs")
                     .replace("\nVinl", "\nVinlow"));
    faulty.close();
    auto frame = std::make_unique<app::CIbisEditorFrm>(stage.Frame().Session().Log());
    frame->OpenFile(faulty.fileName());
    Wait([&] { return frame->IsIdle(); });
    frame->RouteCommand(app::ID_IBIS_NEXT_MESSAGE);
    return frame;
}

/// The loader over a copy that has bus definitions.
TWindow BusEditor(CStage& stage)
{
    ibis::CIBISLoader loader;
    const auto path = TextPath(kExampleFile.toStdString());
    if (!loader.Open(path) || !loader.Select(loader.Components().front())) {
        return nullptr;
    }
    ibis::STimingReference strobe = {"DQS", ibis::EEdgeType::BothEdges, {"CK"}, {}, {"DQ0", "DQ1"}};
    strobe.limits[static_cast<std::size_t>(ibis::ETimingLimit::MinReceiveSetup)] = "25ps";
    strobe.limits[static_cast<std::size_t>(ibis::ETimingLimit::MinReceiveHold)] = "30ps";
    loader.SetDefinitions({ibis::EComponentType::Memory,
                           {{"DQ", ibis::EBusType::Data, {"lane0"}, {std::move(strobe)}}}});
    const auto copy = loader.SaveCopy();
    if (!copy) {
        return nullptr;
    }
    auto dialog = std::make_unique<app::CIBISLoaderDlg>(nullptr, stage.Frame().Session().Log());
    dialog->OpenFile(QString::fromStdString(PathText(*copy)));
    Wait([&] { return dialog->IsIdle(); });
    dialog->findChild<QTabWidget*>(QStringLiteral("ui_IDC_TABS"))->setCurrentIndex(2);
    return dialog;
}

/// A page of the compose wizard over the example.
std::function<TWindow(CStage&)> Compose(int page)
{
    return [page](CStage& stage) -> TWindow {
        auto wizard = std::make_unique<app::CComposeWizard>(nullptr, stage.Frame().Session().Log());
        ui::CScriptedAnswers answers;
        wizard->findChild<QLineEdit*>(QStringLiteral("OutputPath"))
            ->setText(QStringLiteral("composite.ibs"));
        answers.ThenPath(QStringLiteral("memory-composite.json"));
        wizard->findChild<QPushButton*>(QStringLiteral("OpenDescription"))->click();
        wizard->restart();
        for (int i = 0; i < page; ++i) {
            wizard->next();
        }
        Wait([&] { return wizard->IsIdle(); });
        return wizard;
    };
}

/// The pane over a capacitor whose model is a file.
TWindow Editor(CStage& stage)
{
    auto* list = stage.Frame().findChild<app::CModelListView*>(QStringLiteral("Models"));
    list->SearchField().setText(QStringLiteral("CAP-0133"));
    stage.Settle();
    list->Table().selectRow(0);
    return nullptr;
}

TWindow EditorDialog(CStage& stage)
{
    const CZovLibrary& library = *stage.Frame().Session().ProjectLibrary();
    auto dialog = std::make_unique<app::CUiEditorDlg>(
        stage.Frame().Session(), stage.Frame().Session().ProjectLibrary(),
        app::CRecordEditor::TRecords{library.Records()[0], library.Records()[1]}, &stage.Frame());
    dialog->Editor().ShowPage("Capacitor");
    return dialog;
}

TWindow AddModel(CStage& stage)
{
    const auto library = stage.Frame().Session().ProjectLibrary();
    return std::make_unique<app::CAddModelDlg>(library, &library->At(0), &stage.Frame());
}

/// An IC with everything it may have.
std::shared_ptr<CZovLibrary> Parts()
{
    auto library = std::make_shared<CZovLibrary>();
    CZovRcdProps& ic = library->Add(ERecordType::Ic);
    ic.SetString(EPropId::ModelName, "FPGA-676");
    ic.SetString(EPropId::MfgPartNumber, "LX-676-2");
    ic.SetString(EPropId::Manuf, "Larix");
    ic.SetString(EPropId::Description, "the board's controller");
    SIoModel io{"memory.ibs", "NVM2", true, {}};
    io.buses.push_back({"DQ[7:0]",
                        EBusType::Data,
                        EEdgeType::BothEdges,
                        {{"DQS_P", "DQS_N"}},
                        {"DQ0", "DQ1", "DQ2", "DQ3"},
                        {{"CK_P", "CK_N"}}});
    ic.SetComposite(io);
    ic.SetComposite(SDcModel{
        true,
        SSpiceRef{"nvm2_pdn.sp", "NVM2_PDN"},
        {{1.0, 0.05, 0.03, 4.5, {"A1", "A2", "B7"}}, {3.3, 0.05, 0.05, 0.8, {"C1", "C2"}}}});
    ic.SetComposite(SDcConvModel{true,
                                 {{"P1", EConvPin::Input, "P2", 12.0, 0.5, 0.9, 0.1, 0.1},
                                  {"P2", EConvPin::Output, "P1", 1.0, 4.5, {}, 0.03, 0.03}}});
    ic.SetComposite(SAcModel{{},
                             {{false,
                               0.03,
                               2.0,
                               1e-9,
                               "A1 A2",
                               "G1 G2",
                               "VDD",
                               "GND",
                               {{1e6, 0.015}, {1e7, 0.02}, {1e8, 0.1}}}}});
    ic.SetComposite(SVrmModel{{}, {{1.0, 0.02, 10.0, 0.001, {"V1", "V2"}}}});
    ic.SetComposite(SThermalModel{2.5, 1.2, 8.0, 4.0, 125.0});
    ic.SetComposite(SThroughModel{false, {{"1", "2", 1e-9, 0.01}}});
    CZovRcdProps& connector = library->Add(ERecordType::Connector);
    connector.SetString(EPropId::ModelName, "HDR-2X20");
    connector.SetComposite(SCircuitRef{"HDR", "nvm2_pkg.sp", ""});
    return library;
}

/// A page of the editor's dialog over one of those.
std::function<TWindow(CStage&)> EditorPage(std::size_t record, const char* title)
{
    return [record, title](CStage& stage) -> TWindow {
        static const std::shared_ptr<CZovLibrary> parts = Parts();
        parts->SetPath("parts.zov");
        auto dialog = std::make_unique<app::CUiEditorDlg>(
            stage.Frame().Session(), parts, app::CRecordEditor::TRecords{parts->Records()[record]},
            &stage.Frame());
        dialog->Editor().ShowPage(title);
        return dialog;
    };
}

// One row a picture: name of the file, and what is to be seen.
const SShot kShots[] = {
    {"main", Page(app::ID_NAV_PAGE_PROJECT)},
    {"search", Search},
    {"external", Page(app::ID_NAV_PAGE_EXT_LIBS)},
    {"velda-page", Page(app::ID_NAV_PAGE_VELDA)},
    {"options-page", Page(app::ID_NAV_PAGE_OPTIONS)},
    {"options", Form("dlg_IDD_ZOV_DLG_OPTIONS")},
    {"options-v2", Form("dlg_IDD_ZOV_DLG_OPGENERALV2")},
    {"options-units", Units},
    {"options-vendors", Form("dlg_IDD_ZOV_DLG_OPVDR")},
    {"velda", Form("dlg_IDD_ZOV_DLG_VELDA")},
    {"add-library", Form("dlg_IDD_ZOV_DLG_ADDLIB")},
    {"about", Form("dlg_IDD_ZOV_ABOUTBOX")},
    {"help", Help},
    {"assignment", Assignment},
    {"find-model", FindModel},
    {"assignment-origin", AssignmentLayout({app::ID_VIEW_ORIGIN})},
    {"assignment-device", AssignmentLayout({app::ID_SWITCH_VIEW})},
    {"assignment-refdes", AssignmentLayout({app::ID_SWITCH_VIEW, app::ID_VIEW_ORIGIN})},
    {"assignment-empty", NoDesign},
    {"browse-model", Browse},
    {"browse-models", BrowseForSeveral},
    {"create-model", CreateModel},
    {"legend", Form("dlg_IDD_ZOV_DLG_LEGEND")},
    {"generate", Generate(ERecordType::Capacitor, "capacitors.xlsx", "capacitor-columns.txt")},
    {"generate-inductors",
     Generate(ERecordType::Inductor, "inductors.xlsx", "inductor-columns.txt")},
    {"generate-resistors", Generate(ERecordType::Resistor, "resistors.xlsx", nullptr)},
    {"vendor-list", VendorList},
    {"add-model", AddModel},
    {"editor-io", EditorPage(0, "I/O")},
    {"editor-timing", EditorPage(0, "Timing")},
    {"editor-dc", EditorPage(0, "DC")},
    {"editor-dcdc", EditorPage(0, "DC-DC")},
    {"editor-ac", EditorPage(0, "AC")},
    {"editor-impedance", EditorPage(0, "Impedance")},
    {"editor-vrm", EditorPage(0, "VRM")},
    {"editor-thermal", EditorPage(0, "Thermal")},
    {"editor-through", EditorPage(0, "Through")},
    {"editor-spice", EditorPage(1, "SPICE")},
    {"columns", Form("dlg_IDD_ZOV_DLG_COLMGR")},
    {"copy-to-library", Form("dlg_IDD_ZOV_DLG_COPYTOLIB")},
    {"editor-dialog", EditorDialog},
    {"editor", Editor},
    {"curves", Curves},
    {"curves-empty", NoCurves},
    {"curves-db", Decibel},
    {"curves-smith", Smith},
    {"curves-impedance", Impedances},
    {"touchstone", Touchstone},
    {"calculator", Calculator},
    {"ibis-editor", IbisEditor},
    {"ibis-curves", IbisCurves},
    {"ibis-report", IbisReport},
    {"ibis-loader", IbisLoader},
    {"bus-editor", BusEditor},
    {"compose-1", Compose(0)},
    {"compose-2", Compose(1)},
    {"compose-3", Compose(2)},
    {"compose-4", Compose(3)},
    {"compose-5", Compose(4)},
    {"generate-faults", GenerateFaults}, // opens a library: behind all others of this frame
    {"story-1", Story(1)},
    {"story-2", Story(2)},
    {"story-3", Story(3)},
    {"story-4", Story(4)},
    {"story-5", Story(5)},
    {"story-6", Story(6)},
    {"replay", Page(app::ID_ZOV_EVENT_REPLAY)}, // the last, since the toolbar stays
};

} // namespace

std::span<const SShot> Shots()
{
    return kShots;
}

} // namespace zov::shots
