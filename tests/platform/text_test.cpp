// Windows-1252 and UTF-8, to and fro.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace ox {

TEST(Text, BytesAreReadAsWindows1252AndComeBack) {
  const std::string text =
      "A\n~\x7F \u0081\u008D\u008F\u0090\u009D €‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ \u00A0ÄÖÜäöüß§°ÿ";
  const Bytes bytes =
      "A\n~\x7F \x81\x8D\x8F\x90\x9D "
      "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C"
      "\x9E\x9F \xA0\xC4\xD6\xDC\xE4\xF6\xFC\xDF\xA7\xB0\xFF";
  EXPECT_EQ(ToText(bytes), text);
  EXPECT_EQ(ToBytes(text), bytes);
}

TEST(Text, WhatHasNoByteBecomesAQuestionMark) {
  EXPECT_EQ(ToBytes("aĀ\U0010FFFFb 漢字 \U0001F600! \u0080"), "a??b ?? ?! ?")
      << "also the character of the euro sign's number";
  EXPECT_EQ(ToBytes("\x80 \xF8\xFF \xC0\xAF \xED\xA0\x80\xED\xBF\xBF \xF4\x90\x80\x80 \xC3\xC3\xA4 \xE2\x82"),
            "? ?? ?? ?????? ???? ?\xE4 ??")
      << "no beginning, overlong, surrogates, too large, cut off";
  EXPECT_EQ(ToBytes("1234567\377\3772345678"), "1234567??2345678") << "in a block of ASCII";
}

TEST(Text, FilesAreTakenAsUtf8OnlyWhenTheyAre) {
  // The content, its bytes with "?" for what has none, and what is shown of it from the second one on.
  const std::string rows[][3] = {
      {"aMa\xDF", "aMa\xDF", "Maß"},
      {"a\x85 漢 \xE4", "a\x85 \xE6\xBC\xA2 \xE4", "… æ¼¢ ä"},
      {"漢 ä…ƒ\u0085 €x\u00A0Ā", "? \xE4??? ?x\xA0?", " ä…ƒ\u0085 €x\u00A0Ā"},
      {"\uFEFFaäß°", "a\xE4\xDF\xB0", "äß°"},
      {"\u0308A\u0308a\u0302a\u0300u\u0308\u0308x\u0308", "?\xC4\xE2\xE0\xFC?x?", "Äâàü\u0308x\u0308"},
  };
  for (const auto& [content, bytes, shown] : rows) {
    const FileText text(content, '?');
    EXPECT_EQ(text.Characters(), bytes) << content;
    EXPECT_EQ(text.Written(1, bytes.size()), shown);
  }
  const FileText marked(
      "A\u0300A\u0301A\u0302A\u0303A\u0308A\u030AC\u0327E\u0300E\u0301E\u0302E\u0308I\u0300I\u0301I\u0302"
      "I\u0308N\u0303O\u0300O\u0301O\u0302O\u0303O\u0308U\u0300U\u0301U\u0302U\u0308Y\u0301a\u0300a\u0301"
      "a\u0302a\u0303a\u0308a\u030Ac\u0327e\u0300e\u0301e\u0302e\u0308i\u0300i\u0301i\u0302i\u0308n\u0303"
      "o\u0300o\u0301o\u0302o\u0303o\u0308u\u0300u\u0301u\u0302u\u0308y\u0301y\u0308",
      '?');
  EXPECT_EQ(ToText(marked.Characters()), "ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖÙÚÛÜÝàáâãäåçèéêëìíîïñòóôõöùúûüýÿ");
}

}  // namespace ox
