#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace dravik {

/// The texts of a sensor, those of the list's columns first and in their order.
enum class SensorField : std::size_t {
    Function,
    Source,
    Factor,
    Offset,
    Min,
    Max,
    Caption,
    Unit,
    DataBytes,
    Decimals,
};

/// The names of the texts: column titles, and the ends of the keys in the sensor file.
constexpr std::array<const char*, 10> kSensorFields = {
    "Function", "Source", "Factor", "Offset", "Min", "Max", "Caption", "Unit", "Bytes", "Decimals"};

/// So many of them are columns of the list; the keys of the others need not be there, which reads
/// as an empty text.
constexpr std::size_t kSensorColumns = 8;

/// One sensor as the sensor file has it: texts as written, neither lower-cased nor converted.
using SensorRow = std::array<std::string, kSensorFields.size()>;

/// The sensors being edited and the one that is selected. Nothing is written to a file here.
class SensorEditor {
 public:
    /// Takes the rows from the section SensorConfig of a file and selects the first.
    void Load(const std::string& file);

    const std::vector<SensorRow>& Rows() const { return rows_; }
    int Count() const { return static_cast<int>(rows_.size()); }

    /// The selected row, -1 while there is none.
    int Selected() const { return selected_; }
    /// A row that does not exist is not selected.
    void Select(int row);

    /// A text of the selected row; empty without one.
    const std::string& Text(SensorField field) const;
    /// Without a selected row nothing happens.
    void SetText(SensorField field, std::string text);

    /// "PID " and the number of the selected row as two hexadecimal digits; "PID" without one.
    std::string Title() const;

    /// Appends a row with starting values and selects it; false when the table is full.
    bool Add();
    /// Appends a copy of the selected row and selects it; false when the table is full or nothing
    /// is selected.
    bool Copy();
    /// Removes the selected row; the one that moves up into its place is selected, else the last.
    void Delete();

    /// True when the program could not load another row.
    bool Full() const;

 private:
    void Append(SensorRow row);

    std::vector<SensorRow> rows_;
    int selected_ = -1;
};

}  // namespace dravik
