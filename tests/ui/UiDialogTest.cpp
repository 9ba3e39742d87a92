// SPDX-License-Identifier: Apache-2.0
#include "ui/UiDialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace zov::ui {
namespace {

constexpr unsigned ID_CLEAR = 7;

/// What a form's generated class looks like.
struct SForm
{
    QLineEdit* ui_IDC_NAME = nullptr;
    QPushButton* ui_IDC_CLEAR = nullptr;
    void setupUi(QDialog* dialog)
    {
        dialog->setObjectName(QStringLiteral("dlg_IDD_TEST"));
        dialog->setWindowTitle(QStringLiteral("Test"));
        ui_IDC_NAME = new QLineEdit(dialog);
        ui_IDC_CLEAR = new QPushButton(dialog);
    }
};

class CTestDlg : public CqtDialogRes<SForm>
{
    ZOV_DECLARE_MESSAGE_MAP()
public:
    explicit CTestDlg(QWidget* parent)
        : CqtDialogRes(parent)
    {
        m_form.ui_IDC_NAME->setText(QStringLiteral("x"));
        BindButton(*m_form.ui_IDC_CLEAR, ID_CLEAR);
    }
    SForm& Form() { return m_form; }

private:
    void OnClear() { m_form.ui_IDC_NAME->clear(); }
    void OnUpdateClear(CCmdUI& ui) { ui.Enable(!m_form.ui_IDC_NAME->text().isEmpty()); }
};

ZOV_BEGIN_MESSAGE_MAP(CTestDlg, CUiDialog)
ZOV_ON_COMMAND_UPDATE(ID_CLEAR, Clear)
ZOV_END_MESSAGE_MAP()

TEST(UiDialog, IsMadeByTheNameOfItsForm)
{
    CDialogForms::Register(QStringLiteral("dlg_IDD_TEST"),
                           [](QWidget* parent) { return std::make_unique<CTestDlg>(parent); });
    const auto dialog = CDialogForms::Create(QStringLiteral("dlg_IDD_TEST"), nullptr);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), QStringLiteral("dlg_IDD_TEST"));
    EXPECT_EQ(CDialogForms::Create(QStringLiteral("dlg_IDD_OTHER"), nullptr), nullptr);
    EXPECT_TRUE(CDialogForms::Names().contains(QStringLiteral("dlg_IDD_TEST")));
}

TEST(UiDialog, ModalResultsAndButtons)
{
    CTestDlg dialog(nullptr);
    QTimer::singleShot(0, &dialog, [&] {
        QTest::mouseClick(dialog.Form().ui_IDC_CLEAR, Qt::LeftButton);
        EXPECT_EQ(dialog.Form().ui_IDC_NAME->text(), QString());
        EXPECT_FALSE(dialog.Form().ui_IDC_CLEAR->isEnabled());
        dialog.accept();
    });
    EXPECT_EQ(static_cast<int>(dialog.DoModal()), 1);
    QTimer::singleShot(0, &dialog, [&] { dialog.reject(); });
    EXPECT_EQ(dialog.DoModal(), EAnswer::Cancel);
}

TEST(UiDialog, ChecksEnableTheirControls)
{
    QCheckBox check;
    QLineEdit edit;
    CUiDlgItemChkMgr::Enable(check, {&edit});
    EXPECT_FALSE(edit.isEnabled());
    check.setChecked(true);
    EXPECT_TRUE(edit.isEnabled());
}

TEST(Prompt, ScriptedAnswersAreGivenInOrderAndRemembered)
{
    CScriptedAnswers script;
    script.Then(EAnswer::Yes).ThenPath(QStringLiteral("/tmp/new")).ThenDialog([](QDialog& d) {
        d.accept();
    });
    EXPECT_EQ(static_cast<int>(CPrompt::Ask(nullptr, QStringLiteral("Sure?"), EButtons::YesNo)), 6);
    CPrompt::Tell(nullptr, QStringLiteral("Done"));
    EXPECT_EQ(
        CPrompt::SaveFile(nullptr, QStringLiteral("Save"), QStringLiteral("ZOV Library (*.zov)")),
        QStringLiteral("/tmp/new.zov"));
    CTestDlg dialog(nullptr);
    EXPECT_EQ(dialog.DoModal(), EAnswer::Ok);
    EXPECT_TRUE(script.AllUsed());
    EXPECT_EQ(script.Unexpected(), 0);
    EXPECT_EQ(script.Shown().front().text, QStringLiteral("Sure?"));

    EXPECT_EQ(CPrompt::Ask(nullptr, QStringLiteral("Again?"), EButtons::YesNo), EAnswer::No);
    EXPECT_EQ(dialog.DoModal(), EAnswer::Cancel);
    EXPECT_TRUE(CPrompt::OpenFile(nullptr, {}, {}).isEmpty());
    EXPECT_EQ(script.Unexpected(), 3);
}

TEST(Prompt, OnlyEndingsThatTheFiltersNameAreEndings)
{
    const QString images = QStringLiteral("PNG image (*.png);;SVG image (*.svg);;Any (*)");
    const QString library = QStringLiteral("ZOV Library (*.zov)");
    struct SCase
    {
        QString filter;
        QString suggestion;
        const char* typed;
        const char* path;
    };
    for (const SCase& c : {SCase{images, {}, "/tmp/plot 4.7uF", "/tmp/plot 4.7uF.png"},
                           SCase{images, {}, "/tmp/plot", "/tmp/plot.png"},
                           SCase{images, {}, "/tmp/plot.SVG", "/tmp/plot.SVG"},
                           SCase{library, {}, "/tmp/caps v1.2", "/tmp/caps v1.2.zov"},
                           SCase{library, QStringLiteral("/a.zovx"), "/tmp/b.zovx", "/tmp/b.zovx"},
                           SCase{QStringLiteral("All (*)"), {}, "/tmp/x", "/tmp/x"}}) {
        CScriptedAnswers script;
        script.ThenPath(QLatin1String(c.typed));
        EXPECT_EQ(CPrompt::SaveFile(nullptr, QStringLiteral("Save"), c.filter, c.suggestion),
                  QLatin1String(c.path));
    }
}

TEST(Prompt, TheFirstFileDialogStartsWhereTheProgramDoes)
{
    CPrompt::SetFolder({});
    QString folder;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        folder = dialog->directory().absolutePath();
        dialog->reject();
    });
    EXPECT_TRUE(CPrompt::SaveFile(nullptr, QStringLiteral("Save"),
                                  QStringLiteral("ZOV Library (*.zov)"), QStringLiteral("new"))
                    .isEmpty());
    EXPECT_EQ(folder, QDir::currentPath());
}

TEST(Prompt, RealBoxesGiveTheirButtons)
{
    struct SCase
    {
        EButtons buttons;
        QMessageBox::StandardButton press;
        EAnswer answer;
    };
    for (const SCase& c : {SCase{EButtons::YesNoCancel, QMessageBox::Yes, EAnswer::Yes},
                           SCase{EButtons::YesNoCancel, QMessageBox::Cancel, EAnswer::Cancel},
                           SCase{EButtons::YesNo, QMessageBox::No, EAnswer::No},
                           SCase{EButtons::YesNoAll, QMessageBox::YesToAll, EAnswer::YesToAll},
                           SCase{EButtons::OkCancel, QMessageBox::Ok, EAnswer::Ok}}) {
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            box->button(c.press)->click();
        });
        EXPECT_EQ(CPrompt::Ask(nullptr, QStringLiteral("?"), c.buttons), c.answer);
    }
}

TEST(Prompt, EnterInABoxThatWarnsIsNo)
{
    for (const EIcon icon : {EIcon::Question, EIcon::Warning}) {
        QTimer::singleShot(
            0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
        EXPECT_EQ(CPrompt::Ask(nullptr, QStringLiteral("?"), EButtons::YesNoCancel, icon),
                  icon == EIcon::Warning ? EAnswer::No : EAnswer::Yes);
    }
}

} // namespace
} // namespace zov::ui
