"""Each rule of tools/text_rules.py finds what it is for, and lets the right text pass."""

import sys
import unittest
from pathlib import Path

TOOLS = Path(__file__).resolve().parents[2] / "tools"
sys.path[:0] = [str(TOOLS), str(TOOLS / "definitions")]

import text_rules  # noqa: E402
from text_rules import ENGLISH, JAPANESE, Text  # noqa: E402

TERMS = text_rules.Terms((TOOLS.parent / "docs" / "terms.md").read_text(encoding="utf-8"))
WORDS = (  # what is found in a text
    (ENGLISH, "No sound\nanswer", "p:1: \"sound\", say \"valid reply\""),
    (ENGLISH, "Slave\nNumber", "p:1: \"Slave Number\", say \"slave address\""),
    (ENGLISH, "resound, sound-proof", None),
    (JAPANESE, "名前付きパイプの名前", "p: \"名前\", say \"名称\""),
    (JAPANESE, "シリアルサーバー", None),
)
FORM = (("frmA-Label1-0", "&Port:", "ポート(&P):"), ("frmA-Command1-0", "Sto&p", "中止(&S)"))


class Rules(unittest.TestCase):
    def test_words(self):
        for language, text, finding in WORDS:
            self.assertEqual(list(TERMS.faults(Text("p", language, text))), [finding] if finding else [], text)

    def test_prose_keeps_its_lines(self):
        self.assertEqual(text_rules.prose_of_page("<p>a\n<code>off-line\n</code>b"), "a\nx\nb")
        self.assertNotIn("off-line", text_rules.prose_of_markdown("`off-line`\n    off-line\n"))
        self.assertNotIn("timeout", text_rules.prose_of_man_page(".It Fl -timeout Ar S\n"))

    def test_captions_and_placeholders(self):
        self.assertEqual(list(text_rules.repeated_mnemonics(FORM)),
                         ["English, frmA: Alt+P twice: frmA-Label1-0, frmA-Command1-0"])
        self.assertEqual(len(list(text_rules.too_long((("frmA-Command1-0", "OK", "あ" * 14),)))), 1)
        self.assertEqual(list(text_rules.untranslated((("RTU", "RTU"), ("Port", "Port")))), ['no translation: "Port"'])
        page = "<code>%1</code>\n<var>1</var> <var>file</var>"
        self.assertEqual(list(text_rules.unnamed_placeholders("p", page)),
                         ["p:2: a placeholder without a name: <var>1</var>"])


if __name__ == "__main__":
    unittest.main()
