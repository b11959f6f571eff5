#pragma once
// The gallery's pages, each a widget of its own built the way an application builds its forms:
// the grid declared column by column, given its source and finished, in the control's order.
#include <QString>
#include <QWidget>

namespace tq7 {
class GridEditor;
class GridEditorWidget;
}

namespace gallery {

struct SampleDatabase;

// One column of every field type, with sample values in the input row.
QWidget* makeFieldTypesPage(const QString& folder, QWidget* parent = nullptr);

// The lines of one invoice, loaded from the sample database.
QWidget* makeInvoicePage(const SampleDatabase& db, QWidget* parent = nullptr);

// The companion controls: a product card with its picture from a sample image store made in
// folder, rotated labels over a pattern, a page navigator and a button menu.
QWidget* makeCompanionPage(const QString& folder, QWidget* parent = nullptr);

// Checks the invoice grid's records and, when all is well, writes them back to the table; answers
// the message to show, which begins with "บันทึกแล้ว" when the lines were written.
QString saveInvoice(tq7::GridEditor& grid, const QString& connection, const QString& invoiceNo);

}  // namespace gallery
