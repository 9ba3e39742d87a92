// SPDX-License-Identifier: Apache-2.0
/// The documents in a window of their own; the help key opens the page of what has the focus.
#pragma once

#include <QMainWindow>

class QTextBrowser;

namespace zov::app {

class CHelpWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param folder holds the documents' .md files
    CHelpWindow(const QString& folder, QWidget* parent);

    /// Where the documents are: beside the installed program, or in the checkout that it was built
    /// from; empty when they are nowhere.
    static QString DocumentsFolder();
    /// Page of a topic, with "#place" in it: "desktop.md#the-library-tree"; the desktop's first
    /// page for a topic without one.
    static QString PageOf(const QString& topic);

    /// Shows a page of the folder; a page that can't be read is told in its place.
    void ShowPage(const QString& page);
    [[nodiscard]] QString Page() const { return m_page; }

private:
    QString m_folder;
    QString m_page;
    QTextBrowser* m_browser;
};

} // namespace zov::app
