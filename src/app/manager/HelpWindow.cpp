// SPDX-License-Identifier: Apache-2.0
#include "app/manager/HelpWindow.h"

#include "app/Images.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolBar>

namespace zov::app {
namespace {

struct STopic
{
    const char* topic;
    const char* page;
};

constexpr const char* kFirstPage = "desktop.md";

constexpr STopic kTopics[] = {
    {"ZOVWorkflowIC", "desktop.md#ic"},
    {"ZOVWorkflowDiscrete", "desktop.md#discrete"},
    {"ZOVWorkFlowVRM", "desktop.md#vrm"},
    {"ZOVWorkFlowConnector", "desktop.md#connector"},
    {"ZOVWorkFlowPage", "desktop.md#package"},
    {"ZOVWorkFlowSpice", "desktop.md#spice"},
    {"LibraryTree", "desktop.md#the-library-tree"},
    {"ModelList", "desktop.md#the-model-list"},
    {"Options", "desktop.md#options"},
    {"Velda", "desktop.md#the-velda-server"},
    {"ExternalLibraries", "desktop.md#external-libraries"},
    {"Curves", "curves-window.md"},
    {"Assignment", "assignment-window.md"},
    {"Generator", "generator-window.md"},
    {"firstpage", "editor.md"},
    {"ZOVIOModels", "editor.md"},
    {"ZOVDCModels", "editor.md"},
    {"ZOVACModels", "editor.md"},
    {"ZOVThermalModels", "editor.md"},
    {"ZOVVRMModels", "editor.md"},
    {"ZOVDCCONVModels", "editor.md"},
    {"ZOVThroughModels", "editor.md"},
    {"ZOVCapacitorModels", "editor.md"},
    {"ZOVImpedancesModels", "editor.md"},
    {"ZOVSPICEModels", "editor.md"},
    {"ZOVInductorModels", "editor.md"},
    {"ZOVResistorModels", "editor.md"},
};

/// Pictures are as wide as the window at most.
class CHelpText final : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        if (type != QTextDocument::ImageResource) {
            return QTextBrowser::loadResource(type, name);
        }
        const QImage image(QDir(searchPaths().value(0)).filePath(name.path()));
        const int most = viewport()->width() - kPictureMargin;
        return image.width() > most ? image.scaledToWidth(most, Qt::SmoothTransformation) : image;
    }

private:
    static constexpr int kPictureMargin = 24;
};

/// The way documents' places are named after their headings.
QString PlaceName(const QString& heading)
{
    static const QRegularExpression kDropped(QStringLiteral("[^a-z0-9 -]"));
    return heading.toLower().remove(kDropped).replace(QLatin1Char(' '), QLatin1Char('-'));
}

} // namespace

CHelpWindow::CHelpWindow(const QString& folder, QWidget* parent)
    : QMainWindow(parent)
    , m_folder(folder)
    , m_browser(new CHelpText(this))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(tr("Documents"));
    resize(760, 680);
    m_browser->setObjectName(QStringLiteral("HelpText"));
    m_browser->setOpenLinks(false);
    setCentralWidget(m_browser);
    auto* bar = addToolBar(tr("Documents"));
    bar->setObjectName(QStringLiteral("HelpBar"));
    const auto add = [&](const char* text, const char* name, const char* page) {
        QAction* action =
            bar->addAction(tr(text), this, [this, page] { ShowPage(QLatin1String(page)); });
        action->setObjectName(QLatin1String(name));
    };
    add("Desktop", "HelpDesktop", kFirstPage);
    add("Command line", "HelpZov", "zov.md");
    add("Batch", "HelpBatch", "zovra.md");
    connect(m_browser, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        if (url.scheme().isEmpty()) {
            const QString here = QFileInfo(m_page.section(QLatin1Char('#'), 0, 0)).path();
            const QString page = url.path().isEmpty()
                                     ? m_page.section(QLatin1Char('#'), 0, 0)
                                     : QDir::cleanPath(here + QLatin1Char('/') + url.path());
            ShowPage(url.hasFragment() ? page + QLatin1Char('#') + url.fragment() : page);
        } else {
            QDesktopServices::openUrl(url);
        }
    });
}

QString CHelpWindow::DocumentsFolder()
{
    // For builds that stand apart from the sources.
    const QString named = qEnvironmentVariable("ZOVRA_DOCUMENTS");
    if (!named.isEmpty()) {
        return named;
    }
    for (const char* folder :
         {"../share/doc/zovra/docs", "../../docs", "../../../docs", "../../../../docs"}) {
        const QDir dir(QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                       QLatin1String(folder));
        if (dir.exists(QLatin1String(kFirstPage))) {
            return dir.absolutePath();
        }
    }
    return {};
}

QString CHelpWindow::PageOf(const QString& topic)
{
    for (const STopic& known : kTopics) {
        if (topic == QLatin1String(known.topic)) {
            return QLatin1String(known.page);
        }
    }
    return QLatin1String(kFirstPage);
}

void CHelpWindow::ShowPage(const QString& page)
{
    const QString file = page.section(QLatin1Char('#'), 0, 0);
    const QString place = page.section(QLatin1Char('#'), 1, 1);
    if (file != m_page.section(QLatin1Char('#'), 0, 0)) {
        QFile text(m_folder + QLatin1Char('/') + file);
        if (text.open(QIODevice::ReadOnly)) {
            m_browser->setSearchPaths({QFileInfo(text).absolutePath()});
            m_browser->document()->setBaseUrl(
                QUrl::fromLocalFile(QFileInfo(text).absolutePath() + QLatin1Char('/')));
            m_browser->setMarkdown(QString::fromUtf8(text.readAll()));
        } else {
            m_browser->setPlainText(tr("The page '%1' is not among the documents in '%2'.")
                                        .arg(file, QDir::toNativeSeparators(m_folder)));
        }
    }
    m_page = page;
    QTextBlock block = m_browser->document()->begin();
    for (; block.isValid() && !place.isEmpty(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && PlaceName(block.text()) == place) {
            break;
        }
    }
    m_browser->setTextCursor(QTextCursor(block.isValid() ? block : m_browser->document()->begin()));
    m_browser->ensureCursorVisible();
    show();
    raise();
}

} // namespace zov::app
