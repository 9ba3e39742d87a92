// SPDX-License-Identifier: Apache-2.0
#include "Story.h"

#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignFrm.h"
#include "app/assignment/DlgFindModel.h"
#include "app/editor/RecordEditor.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/generator/GeneratorPage.h"
#include "app/manager/CommandIds.h"
#include "base/File.h"
#include "ui/Prompt.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

namespace zov::shots {
namespace {

const char* const kParts =
    "Part Number,Maker,Size,Capacitance,Voltage,TCC,ESR (mOhm),ESL (nH),Model Type\n"
    "KP0402-104,Kestrel,0402,100nF,16,X7R,5,0.4,RLC\n"
    "KP0603-475,Kestrel,0603,4u7,10,X5R,3,0.5,RLC\n"
    "KP0805-226,Kestrel,0805,22uF,6.3,X5R,3,0.6,RLC\n"
    "KP0805-476,Kestrel,0805,ten,6.3,X5R,3,0.6,RLC\n"
    "KP1210-107,Kestrel,1210,100uF,6.3,X5R,2,0.8,RLC\n";
const char* const kBoard = "Component,RefDes,Value\n"
                           "KP0402-104,C1-C8,100nF\n"
                           "KP0603,C9 C10,4.7uF\n"
                           "KP1210-107,C11,100uF\n"
                           "PULLUP,R1 R2,10k\n"
                           "CPU,U1,\n";

/// The files stand in the working folder, so that no path of the machine gets into a picture.
class CStory
{
public:
    CStory()
        : m_stage(QStringLiteral("story.ini"), {}, false)
    {
        for (const auto& [name, text] :
             {std::pair("parts.csv", kParts), {"board.csv", kBoard}, {"issue2.csv", kBoard}}) {
            static_cast<void>(WriteFileAtomic(name, text));
        }
    }
    const QPixmap& Picture(int step)
    {
        using FStep = QPixmap (CStory::*)();
        constexpr FStep kSteps[] = {&CStory::ListComesIn,   &CStory::ModelIsMended,
                                    &CStory::BoardIsOpened, &CStory::ModelIsFound,
                                    &CStory::MapGoesOut,    &CStory::NextIssue};
        while (static_cast<int>(m_pictures.size()) < step) {
            m_pictures.push_back((this->*kSteps[m_pictures.size()])());
        }
        return m_pictures[static_cast<std::size_t>(step - 1)];
    }

private:
    app::CZovMainFrm& Frame() { return m_stage.Frame(); }

    QPixmap ListComesIn()
    {
        QPixmap picture;
        m_answers.ThenDialog([&](QDialog& shown) {
            auto& generator = dynamic_cast<app::CDlgZovGenMain&>(shown);
            app::CGeneratorPage& page = generator.Page(ERecordType::Capacitor);
            page.SetDestination(QStringLiteral("board.zov"));
            page.SetSource(QStringLiteral("parts.csv"));
            Wait([&] { return !page.IsBusy(); });
            generator.findChild<QPushButton*>(QStringLiteral("ui_IDC_GENERATE"))->click();
            Wait([&] { return !generator.IsRunning(); });
            m_stage.Settle();
            picture = generator.grab();
            generator.reject();
        });
        m_stage.Trigger(app::ID_TOOLS_GENERATE);
        m_stage.Settle();
        return picture;
    }
    /// The picture before it is applied; then it is applied and saved.
    QPixmap ModelIsMended()
    {
        auto* list = Frame().findChild<app::CModelListView*>(QStringLiteral("Models"));
        list->Table().selectRow(1);
        m_stage.Settle();
        auto* editor = Frame().findChild<app::CRecordEditor*>();
        auto* number = editor->PageOf("General")->findChild<QLineEdit*>(
            QStringLiteral("ui_IDC_MfgPartNumber"));
        number->setText(QStringLiteral("KP0603-475K10"));
        Q_EMIT number->textEdited(number->text());
        m_stage.Settle();
        const QPixmap picture = Frame().grab();
        editor->Apply();
        m_stage.Settle();
        m_stage.Trigger(app::ID_FILE_SAVE);
        return picture;
    }
    QPixmap BoardIsOpened()
    {
        m_stage.Trigger(app::ID_TOOLS_ASSIGN);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            m_assign = m_assign == nullptr ? qobject_cast<app::CAssignFrm*>(window) : m_assign;
        }
        m_assign->resize(1280, 760);
        m_answers.ThenPath(QStringLiteral("board.csv"));
        Run(app::ID_OPEN_DESIGN);
        return m_assign->grab();
    }
    QPixmap ModelIsFound()
    {
        QPixmap picture;
        Run(app::ID_CREATE_DISC_MODEL);
        m_assign->View().setCurrentIndex(m_assign->View().model()->index(1, 0));
        m_answers.ThenDialog([&](QDialog& shown) {
            auto& find = dynamic_cast<app::CDlgFindModel&>(shown);
            find.findChild<QLineEdit*>(QStringLiteral("ui_IDC_FIND_TEXT"))
                ->setText(QStringLiteral("805-2"));
            Wait([&] { return !find.IsSearching(); });
            picture = find.grab();
            find.accept();
        });
        Run(app::ID_FIND_MODEL);
        return picture;
    }
    QPixmap MapGoesOut()
    {
        m_answers.ThenPath(QStringLiteral("board_map.csv"));
        Run(app::ID_EXPORT_MAP_FILE);
        m_assign->View().expandAll();
        m_stage.Settle();
        return m_assign->grab();
    }
    QPixmap NextIssue()
    {
        m_answers.ThenPath(QStringLiteral("issue2.csv"));
        Run(app::ID_OPEN_DESIGN);
        m_answers.ThenPath(QStringLiteral("board_map.csv"));
        Run(app::ID_IMPORT_MAP_FILE);
        Run(app::ID_SWITCH_VIEW);
        return m_assign->grab();
    }

    template <class F>
    static void Wait(F isDone)
    {
        while (!isDone()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }
    void Run(unsigned command)
    {
        m_assign->Actions().Action(command)->trigger();
        do {
            m_stage.Settle();
        } while (m_assign->View().IsBusy());
        m_assign->OnIdleUpdateCmdUI();
    }

    ui::CScriptedAnswers m_answers;
    CStage m_stage;
    app::CAssignFrm* m_assign = nullptr;
    std::vector<QPixmap> m_pictures;
};

} // namespace

std::function<std::unique_ptr<QWidget>(CStage&)> Story(int step)
{
    return [step](CStage&) -> std::unique_ptr<QWidget> {
        static auto* story = new CStory; // lives as long as its windows: to the end
        const QPixmap& pixmap = story->Picture(step);
        auto picture = std::make_unique<QLabel>();
        picture->setPixmap(pixmap);
        picture->setFixedSize(pixmap.size() / pixmap.devicePixelRatio());
        return picture;
    };
}

} // namespace zov::shots
