#pragma once

#include <string>

namespace tessaly {

// A macro as it is printed, with odd things in each place where there can be some.
struct OddFile {
  std::string head, attribute, element, text, tail;

  [[nodiscard]] std::string bytes() const {
    return head + "<macro name=\"M\"" + attribute + ">\n" + "    <note" + attribute + ">" + text +
           "</note>\n" + "    <data>\n        " + element + "\n" + first() + "        " + element + "\n" +
           second() + "        " + element + "\n    </data>\n    " + element + "\n</macro>\n" + tail;
  }
  [[nodiscard]] std::string first() const {
    return "        <cmd fid=\"A\"" + attribute + ">\n            " + element +
           "\n            <param name=\"p\"" + attribute + " value=\"OLD\" />\n        </cmd>\n";
  }
  [[nodiscard]] std::string second() const { return "        <cmd fid=\"B\"" + attribute + " />\n"; }
};

inline const OddFile kOddFiles[] = {
    {"", "", "<z />", "plain", ""},
    {"<?xml version=\"1.0\" encoding=\"windows-1252\" standalone='yes'?>\n", " x=\"&#x2013;&#8364;\xFC\"",
     "<!-- &#x2013; \xFC -->", "&#x2013; &#xFC; \xFC", "<!-- end -->\n"},
    {"<?XML version='1\"0' encoding='ISO-8859-1' more=\"x\"?>\n<?xml-stylesheet href=\"a.xsl\" "
     "type='text/xsl'?>\n",
     " x=\"a &amp; b &lt;&gt;&quot;&apos;\"", "<?xml-note  two  blanks ?>", "<?xmlx?> and text ", ""},
    {"\xEF\xBB\xBF<!DOCTYPE macro SYSTEM \"m.dtd\">\n", " x=\"Küche\" y='\"'", "<!ELEMENT data>",
     "  white\n\tspace   stays  ", "<?end?>\n"},
    {"<!-- first -->\n", " x=\"a & b &uuml; &#; &#x41\"", "<z>&  & &bogus; &#</z>", "a & b",
     "<macro name=\"N\" />\n"},
    {"", " x=\"'>&amp;#x41;\n&#x0A;&#13;\"",
     "<z><![CDATA[ <a> &#x41; ]]><cmd fid=\"C\" /><param value=\"V\" />"
     "<!-- <cmd> --><a /><A /><Z /></z>",
     "mixed <b>bold</b>\n <i />\t<u />  ", ""},
    {"<?xml version='1.0'?>\n", " x=\"\xC3\xE4&#0;&#1;\"", "<z>   </z>", "\xFC<!-- c -->", ""},
};

}  // namespace tessaly
