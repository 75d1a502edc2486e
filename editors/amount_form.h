#pragma once

#include <QList>
#include <QString>
#include <string>
#include <string_view>

class QGridLayout;
class QLabel;
class QWidget;

namespace ledgix::controls {
class zqTextBox;
}

// What the forms of the editors have in common: rows of amounts with their units, in three columns.
namespace ledgix::editors {

// Around the content of a form and between its parts, in pixels.
inline constexpr int kMargin = 12;
inline constexpr int kSpacing = 8;

// Of a profile and of a property, in characters: what their columns hold.
inline constexpr int kLongestName = 50;

enum class Unit { kMoneyAYear, kMoney, kPercent, kPercentAYear, kYears };

struct AmountField {
    const char* name;     // of the box, as an object
    const char* caption;  // of the label before it
    Unit unit;
};

// Columns of a grid of amounts. Space that is left over goes to their right.
enum AmountColumn { kCaptionColumn = 0, kBoxColumn = 1, kUnitColumn = 2, kSpareColumn = 3 };

// Appends a row to a grid: the caption, a right-aligned numeric box with "0", and the unit. Both labels are buddies of
// the box. Money has 2 decimals, percentages 4, years none; nothing goes below zero. Yearly money opens the period
// calculator. All boxes of such grids share one width. The grid's parent, if it has one, owns the widgets.
controls::zqTextBox* AddAmountRow(QGridLayout& grid, const AmountField& field);

// "$ a year" with the region's currency symbol, "$", "%", "% a year", "years".
QString UnitText(Unit unit);

// Gives several grids of amounts the same width of captions.
void AlignCaptions(const QList<QGridLayout*>& grids);

// A plain caption; the buddy, if there is one, gets its text as accessible name.
QLabel* NewLabel(const char* name, const QString& text, QWidget* buddy = nullptr);

// The number of the model as a box can show it: never an exponent, and 0 in place of what is no finite number.
void ShowAmount(controls::zqTextBox& box, double value);
// The number in a box.
double AmountOf(const controls::zqTextBox& box);

QString ToScreen(std::string_view utf8);
std::string FromScreen(const QString& text);

}  // namespace ledgix::editors
