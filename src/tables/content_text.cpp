// Marks and values, line by line.
#include "tables/content_text.h"

#include "platform/hex_text.h"
#include "platform/text.h"
#include "tables/device_characters.h"

namespace ox {
namespace {

constexpr std::string_view kTableEnd = "/E/\n";

std::string Field(char mark, BytesView value) {
  std::string field{'/', mark, '/', '"'};
  return field.append(ShownText(value)).append("\"");
}

}  // namespace

std::string ShownText(BytesView deviceText) {
  std::string text;
  for (const char character : deviceText) {
    if (DeviceShows(character)) {
      text += ToText(Bytes(1, FileCharacter(character)));
    } else {
      text.append("\\").append(HexWord(ByteValue(character)).substr(2));
    }
  }
  return text;
}

std::string PointTableText(const TableContent& tables) {
  std::string text = Field('S', tables.version) + "\n";
  for (const OfficeContent& office : tables.offices) {
    text.append(Field('A', office.name)).append(" ").append(Field('Z', office.code)).append("\n");
    for (const PointContent& point : office.points) {
      text.append(Field('N', point.number)).append(" ").append(Field('D', point.first));
      text.append(" ").append(Field('M', point.second));
      text.append(" ").append(Field('T', point.name)).append("\n");
    }
    text += "/B/ Ende\n";  // a mark at the end of a line would take the line end for the next one
  }
  return text.append(kTableEnd);
}

std::string ParameterListText(const TableContent& tables) {
  std::string text;
  for (const ParameterContent& parameter : tables.parameters) {
    text.append(Field('P', parameter.number)).append(" ").append(Field('T', parameter.designation));
    text.append(" ").append(Field('M', parameter.unit)).append("\n");
  }
  return text.append(kTableEnd);
}

std::string AssignmentTableText(const TableContent& tables) {
  std::string text;
  for (const OfficeContent& office : tables.offices) {
    for (const PointContent& point : office.points) {
      Bytes list;
      for (const Bytes& number : point.parameters) list.append(list.empty() ? "" : ",").append(number);
      if (list.empty()) continue;
      text.append(Field('N', point.number)).append(" ").append(Field('P', list)).append("\n");
    }
  }
  return text.append(kTableEnd);
}

}  // namespace ox
