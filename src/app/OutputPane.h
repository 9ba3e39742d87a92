// SPDX-License-Identifier: Apache-2.0
/// The "Output" pane: what the engines have to say, with the time of day. Lines may come from any
/// thread.
#pragma once

#include "base/Sink.h"

#include <QPlainTextEdit>

#include <mutex>
#include <string>

namespace zov::app {

class COutputPane : public QPlainTextEdit, public CLogSink
{
    Q_OBJECT

public:
    explicit COutputPane(QWidget* parent = nullptr);

    /// Any thread. Lines are gathered and shown together, so that a load with 100,000 messages
    /// doesn't stall the window.
    void Write(std::string_view text) override;

Q_SIGNALS:
    /// An error or warning came in that the user has not seen, since the pane is hidden.
    void Unseen();

private:
    void Flush();

    /// Older lines go when there are more.
    static constexpr int kMaxLines = 50000;

    std::mutex m_mutex;
    std::string m_pending;
    bool m_flushDue = false;
    /// The last line is kept in sight, until the user scrolls away from it.
    bool m_follows = true;
};

} // namespace zov::app
