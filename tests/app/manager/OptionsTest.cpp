// SPDX-License-Identifier: Apache-2.0
#include "MainFrameFixture.h"
#include "app/manager/OptionsDlg.h"
#include "support/SourcePaths.h"
#include "ui/UiDialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include <filesystem>
#include <fstream>

#ifndef _WIN32
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace zov::app {
namespace {

struct OptionsTest : MainFrameTest
{
    template <class Widget>
    static Widget& At(QWidget& in, const char* name)
    {
        auto* widget = in.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return *widget;
    }
    const SZovSettings& Settings() { return frame.Session().Settings(); }
};

TEST_F(OptionsTest, LabelsStandAsTheyAre)
{
    for (const char* form : {"dlg_IDD_ZOV_DLG_OPGENERAL", "dlg_IDD_ZOV_DLG_OPGENERALV2"}) {
        const auto page = ui::CDialogForms::Create(QLatin1String(form), nullptr);
        ASSERT_NE(page, nullptr) << form;
        QStringList texts;
        for (const QAbstractButton* button : page->findChildren<QAbstractButton*>()) {
            texts += button->text();
        }
        texts.sort();
        EXPECT_EQ(texts.join(QLatin1Char('|')),
                  QStringLiteral("Auto Save Ext Lib|Enable ZOV V2|Open ZOV Preference|"
                                 "Save a copy of 'External Libraries' Preference|Sync Max Cap|"
                                 "Sync Max Vol|Sync Min Cap|Sync Min Vol|Sync Model Path"))
            << form;
    }
}

TEST_F(OptionsTest, TheDialogChangesTheSettingsAndStoresThem)
{
    answers.ThenDialog([](QDialog& dialog) {
        At<QCheckBox>(dialog, "ui_IDC_AUTO_SAVE").click();
        At<QCheckBox>(dialog, "ui_IDC_SYNC_MIN_CAP").click();
        auto& limit = At<QLineEdit>(dialog, "ui_IDC_MIN_CAP");
        EXPECT_EQ(limit.text(), QStringLiteral("100pF"));
        limit.selectAll();
        QTest::keyClicks(&limit, QStringLiteral("abc"));
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible()) << "a value that can't be read keeps it open";
        limit.selectAll();
        QTest::keyClicks(&limit, QStringLiteral("47pF"));
        dialog.accept();
    });
    Trigger(ID_TOOLS_OPTIONS);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("'abc' is no value")));
    EXPECT_FALSE(Settings().autoSaveExternalLibrary);
    EXPECT_TRUE(Settings().capacitanceLess.on);
    EXPECT_EQ(Settings().capacitanceLess.limit, 47e-12);
    EXPECT_EQ(store.Text("ZOV Settings", "Hide Decap with capacitance less than"), "4.7e-11");
    EXPECT_EQ(store.Integer("ZOV Settings", "Automatically Save External Library"), 0);

    answers.ThenDialog([](QDialog& dialog) {
        At<QCheckBox>(dialog, "ui_IDC_AUTO_SAVE").click();
        dialog.reject();
    });
    Trigger(ID_TOOLS_OPTIONS);
    EXPECT_FALSE(Settings().autoSaveExternalLibrary) << "cancelled";
}

TEST(OptionsPage, AWrongValueIsToldOnce)
{
    CMemorySettings store;
    CNullLog log;
    CZovSession session(store, log, [](const char*) { return std::nullopt; });
    COptionsDlg page(session, nullptr, COptionsDlg::EUse::Page);
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    OptionsTest::At<QCheckBox>(page, "ui_IDC_SYNC_MIN_CAP").click();
    auto& limit = OptionsTest::At<QLineEdit>(page, "ui_IDC_MIN_CAP");
    limit.setFocus();
    limit.selectAll();
    QTest::keyClicks(&limit, QStringLiteral("abc"));
    int boxes = 0;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            ++boxes;
            box->close();
        }
    });
    closer.start(20);
    QTest::keyClick(&limit, Qt::Key_Return);
    QTest::qWait(100);
    EXPECT_EQ(boxes, 1);
}

TEST_F(OptionsTest, AUnitChosenOnTheOptionsPageShowsInTheListsAtOnce)
{
    CZovLibrary library;
    CZovRcdProps& record = library.Add(ERecordType::Resistor);
    record.SetString(EPropId::ModelName, "r");
    record.SetDouble(EPropId::Resistance, 2.2);
    CNullLog log;
    ASSERT_TRUE(SaveLibrary(library, folder.Path() / "r.zov", {}, log));
    OpenProject(folder.Path() / "r.zov");
    const auto shown = [&] { return Models().Model().index(0, 2).data().toString(); };
    EXPECT_EQ(shown(), QStringLiteral("2200mOhm"));

    Trigger(ID_NAV_PAGE_OPTIONS);
    auto& page = At<QDialog>(frame, "dlg_IDD_ZOV_DLG_OPTIONS");
    auto& unit = At<QComboBox>(page, "ui_IDC_UNIT_RESISTANCE");
    unit.setCurrentText(QStringLiteral("Ohm"));
    Q_EMIT unit.activated(unit.currentIndex());
    EXPECT_EQ(shown(), QStringLiteral("2.2Ohm"));
    EXPECT_NE(store.Text("ZOV Settings", "Units")->find("1=Ohm;"), std::string::npos);
    QTest::keyClick(&page, Qt::Key_Escape);
    EXPECT_TRUE(page.isVisibleTo(&frame)) << "a page is not closed by a key";
}

TEST_F(OptionsTest, ExternalLibrariesAreSavedAsPreferenceAndOpenedFromOne)
{
    frame.Session().AddExternals({Library("a", 1), Library("b", 2)}, CLibraryTree::kRoot);
    WaitIdle();
    answers.ThenPath(Text(folder.Path() / "kept"));
    answers.ThenDialog(
        [](QDialog& dialog) { At<QPushButton>(dialog, "ui_IDC_SAVE_PREFERENCE").click(); });
    Trigger(ID_TOOLS_OPTIONS);
    EXPECT_NE(folder.Read("kept.zovp").find("b.zov"), std::string::npos);

    for (const auto& library : frame.Session().Tree().LibrariesOf(CLibraryTree::kRoot)) {
        frame.Session().RemoveNode(frame.Session().Tree().Find(*library));
    }
    answers.ThenPath(Text(folder.Path() / "kept.zovp"));
    answers.ThenDialog(
        [](QDialog& dialog) { At<QPushButton>(dialog, "ui_IDC_OPEN_PREFERENCE").click(); });
    Trigger(ID_TOOLS_OPTIONS);
    WaitIdle();
    EXPECT_EQ(frame.Session().Set().Externals().size(), 2U);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(OptionsTest, VendorLibrariesAreKept)
{
    const auto drive = [](QDialog& dialog) {
        At<QPushButton>(dialog, "ui_IDC_ADD").click();
        At<QListView>(dialog, "ui_IDC_VENDORS")
            .setCurrentIndex(At<QListView>(dialog, "ui_IDC_VENDORS").model()->index(0, 0));
        At<QPushButton>(dialog, "ui_IDC_REMOVE").click();
        dialog.accept();
    };
    answers.ThenPaths({QStringLiteral("/a.xml"), QStringLiteral("/b.xml")});
    answers.ThenDialog(drive);
    Trigger(ID_TOOLS_OPTIONS);
    EXPECT_EQ(frame.Session().VendorLibraries(), QStringList(QStringLiteral("/b.xml")));
}

#ifndef _WIN32
TEST_F(OptionsTest, TheVeldaServerIsReachedOrToldWhyNot)
{
    const int server = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(server, 1), 0);
    socklen_t length = sizeof address;
    ::getsockname(server, reinterpret_cast<sockaddr*>(&address), &length);
    const int port = ntohs(address.sin_port);

    answers.ThenDialog([&](QDialog& dialog) {
        At<QLineEdit>(dialog, "ui_IDC_SERVER_IP").setText(QStringLiteral("127.0.0.1"));
        At<QSpinBox>(dialog, "ui_IDC_SERVER_PORT").setValue(port);
        auto& state = At<QLabel>(dialog, "ui_IDC_STATE");
        At<QPushButton>(dialog, "ui_IDC_TEST").click();
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return state.text().endsWith(QStringLiteral(" answers.")); }));
        ::close(server);
        At<QPushButton>(dialog, "ui_IDC_TEST").click();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return state.text().contains(QStringLiteral("can't be reached")); }));
        dialog.accept();
    });
    Trigger(ID_VELDA_LIBRARY);
    EXPECT_EQ(Settings().veldaServerIp, "127.0.0.1");
    EXPECT_EQ(store.Integer("ZOV Settings", "Velda Server PortNum"), port);
    Trigger(ID_NAV_PAGE_VELDA);
    EXPECT_TRUE(At<QLabel>(frame, "ui_IDC_SERVER").text().contains(QString::number(port)));
}
#endif

TEST_F(OptionsTest, EveryFormIsMadeByItsName)
{
    for (const QString& name : ui::CDialogForms::Names()) {
        const auto dialog = ui::CDialogForms::Create(name, &frame);
        ASSERT_NE(dialog, nullptr) << name.toStdString();
        EXPECT_EQ(dialog->objectName(), name);
        EXPECT_FALSE(dialog->windowTitle().isEmpty()) << name.toStdString();
        EXPECT_NE(dialog->layout(), nullptr) << name.toStdString() << ": no fixed places";
    }
    for (const auto& form :
         std::filesystem::directory_iterator(test::SourceFolder() + "/src/app/forms")) {
        std::ifstream in(form.path());
        const std::string text{std::istreambuf_iterator<char>(in), {}};
        if (text.find("<widget class=\"QDialog\"") == std::string::npos) {
            continue; // a page within a dialog
        }
        const QString name = QString::fromStdString(form.path().stem().string());
        EXPECT_TRUE(ui::CDialogForms::Names().contains(name)) << name.toStdString();
    }
    EXPECT_EQ(ui::CDialogForms::Create(QStringLiteral("dlg_IDD_ZOV_DLG_OPTIONS"), nullptr), nullptr)
        << "it needs the open libraries";
}

} // namespace
} // namespace zov::app
