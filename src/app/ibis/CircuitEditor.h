// SPDX-License-Identifier: Apache-2.0
/// A SPICE circuit of a composite file: its file, its sub-circuit, and what the ports tie to.
#pragma once

#include "ibis/Composite.h"

#include <QWidget>

class QLineEdit;

namespace zov::app {

class CTextTable;

/// Package or on-die network.
class CCircuitEditor : public QWidget
{
    Q_OBJECT

public:
    CCircuitEditor(const QString& title, const char* objectName, QWidget* parent);
    void Set(const ibis::SCompositeCircuit& circuit);
    [[nodiscard]] ibis::SCompositeCircuit Circuit() const;

private:
    void Browse();

    QLineEdit* m_name;
    QLineEdit* m_file;
    QLineEdit* m_subcircuit;
    CTextTable* m_ports;
};

} // namespace zov::app
