// Element sets of two lines of 69 columns.
#pragma once

#include <string_view>

#include "solsys/element_sets.h"

namespace solsys {

// Reads a pair of lines; the first fault, or none. The record is written only without one; its
// name is left alone. Faults come in this order: characters and length of each line, line
// numbers, checksums, blank columns, the fields from left to right, the two numbers' equality,
// ranges.
TLEFault read_element_lines(std::string_view line1, std::string_view line2, bool any_checksum,
                            TLERecord& record);

// Without blanks, tabulators and carriage returns at the end.
std::string_view without_end(std::string_view line);

// Copies a text into a field of the record, cut to fit between characters.
void store_text(std::string_view text, char* field, std::size_t size);

}  // namespace solsys
