#pragma once
// The gallery's pages, each a widget of its own built the way an application builds its forms:
// the grid declared column by column, given its source and finished, in the control's order.
#include <QString>
#include <QWidget>
#include <functional>

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

// The browse view over the 100,000 sales of the sample database, with a status line that tells
// each command the view raises and its result text.
QWidget* makeBrowsePage(const SampleDatabase& db, QWidget* parent = nullptr);
// The companion controls: a product card with its picture from a sample image store made in
// folder, rotated labels over a pattern, a page navigator and a button menu.
QWidget* makeCompanionPage(const QString& folder, QWidget* parent = nullptr);

// Checks the invoice grid's records and, when all is well, writes them back to the table; answers
// the message to show, which begins with "บันทึกแล้ว" when the lines were written.
QString saveInvoice(tq7::GridEditor& grid, const QString& connection, const QString& invoiceNo);

// The weighing scale reader on the gallery's simulated scale, and the public address tracker on
// the gallery's own echo and registration service.
QWidget* makeDevicesPage(QWidget* parent = nullptr);
// Brings the devices page into a state for its screenshot ("positive", "negative",
// "disconnected", "tracker"); false when it did not get there in time.
bool showDevicesState(QWidget* page, const QString& state);
// The ribbon of a Thai trading desk in the three skins, with a status line for its events.
QWidget* makeRibbonPage(QWidget* parent = nullptr);
// Takes the ribbon page's pictures through shoot(file): each skin at rest, hovered and pressed,
// and a tab clicked; with "-2x" in the names when the screen is scaled.
void ribbonScreenshots(QWidget* page, const std::function<void(const QString&)>& shoot);

}  // namespace gallery
