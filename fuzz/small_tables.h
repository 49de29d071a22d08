// Three small station tables that fit together.
#pragma once

#include "platform/bytes.h"

namespace ox {

constexpr BytesView kMesFile =
    "Netz\r\n/S/\"1\"\r\n/A/\"Amt\"/Z/\"123\"\n/N/\"11111111\"/D/\" 0012\"/M/\"-9999\"/T/\"Pegel\"\n"
    "/N/\"12222222\" /D/\"-0000\" /M/\" 0000\" /T/\"X\"\n/B/ Ende\n/E/";
constexpr BytesView kParFile = "/P/\"0001\"/T/\"Hoehe\"/M/\"m/s\"\n/P/\"1023\"/T/\"123456789\"/M/\"cm \"/E/";
constexpr BytesView kZuoFile = "/N/\"11111111\"/P/\"0001,1023\"\n/N/\"12222222\"/P/\"1023\"\n/E/";

}  // namespace ox
