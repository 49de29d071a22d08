// The content of an image as the three table files that it could have been made of.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "tables/image_content.h"

namespace ox {

// Each is a table file, UTF-8 with LF as line end: one line a point, parameter or assignment. A code that the
// device does not show, from a damaged image, stands there as "\" and two hexadecimal digits.

std::string PointTableText(const TableContent& tables);
std::string ParameterListText(const TableContent& tables);
/// Points without parameters have no line.
std::string AssignmentTableText(const TableContent& tables);

/// A text of the image for people, UTF-8, as the above write it.
std::string ShownText(BytesView deviceText);

}  // namespace ox
