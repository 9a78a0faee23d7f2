#!/usr/bin/env python3
"""Writes the parameter reference of every model from the tables beside this file.

  make_reference.py --manual FOLDER      pages parameters*.html into FOLDER/Vorlant and FOLDER/VorlantJ; the build does this
  make_reference.py --documents FOLDER   one Markdown page for each model; docs/parameters is made so
  make_reference.py --check FOLDER       says which Markdown pages are out of date and exits with 1 if any is
"""

import argparse
import sys
from html import escape
from pathlib import Path

from models import MODELS
from reference import ENGLISH, JAPANESE, ModelReference, selection_tables

HEADINGS = (("tag", "name", "Japanese", "unit", "limits or choices", "default", "class"),
            ("タグ", "名称", "英語", "単位", "設定範囲または選択肢", "初期値", "分類"))
TITLE = ("Parameter reference", "パラメータ一覧")
OF_MODEL = ("Parameters of the %s", "%sのパラメータ")
TABLES = ("Selection tables", "選択表")
CONTENTS, BACK = ("Contents", "目次"), ("Back", "前へ")
ABOUT = (
    "All parameters of each model, as its definition describes them. Values are shown as in the grid while every"
    " parameter holds its default. Where a limit depends on other parameters the status bar shows the one in force. Of °C and K"
    " it is the unit that is set, for an alarm where its type is one of temperatures; a voltage or current input has none. The"
    " class says what <a href=\"review.html\">Review and write</a> ticks by itself; a parameter of the class measured is"
    " never written. <kbd>F1</kbd> in a cell of the grid opens the row of its parameter.",
    "機種ごとの全パラメータを、定義ファイルの内容に基づいて示します。値は、すべてのパラメータが初期値のときに表に表示される形です。"
    "ほかのパラメータによって変わる設定範囲は、ステータスバーで確認してください。°CとKは、設定されている単位です。警報は、温度で動作する"
    "種類の場合だけです。電圧入力と電流入力には単位がありません。分類は、"
    "<a href=\"review.html\">変更の確認と書き込み</a>で自動的にチェックするかどうかを決めます。分類が「測定値」のパラメータは"
    "書き込みません。表のセルで<kbd>F1</kbd>を押すと、そのパラメータの行が開きます。")
LANGUAGES = (("Vorlant", "en"), ("VorlantJ", "ja"))


def page_name(model):
    return f"parameters-{model.code}.html"


def page(language, title, way, body):
    return "\n".join((
        "<!DOCTYPE html>", f'<html lang="{LANGUAGES[language][1]}">', "<head>", '<meta charset="utf-8">',
        f"<title>{title} - Vorlant</title>", '<link rel="stylesheet" type="text/css" href="style.css">', "</head>",
        "<body>", f'<p class="way"><a href="index.html">{CONTENTS[language]}</a>{way}</p>', *body,
        f'<p class="way"><a href="index.html">{CONTENTS[language]}</a></p>', "</body>", "</html>", ""))


def contents_page(language):
    links = [f'<li><a href="{page_name(model)}">{OF_MODEL[language] % model.code}</a></li>' for model in MODELS]
    body = [f'<h1 id="parameters">{TITLE[language]}</h1>', f"<p>{ABOUT[language]}</p>", "<ul>", *links, "</ul>",
            f'<h2 id="tables">{TABLES[language]}</h2>']
    for table in selection_tables(language):
        body += [f'<h3 id="{table.section}">{table.title}</h3>', "<table>", _line("th", table.headings),
                 *(_line("td", row) for row in table.rows), "</table>"]
    return page(language, TITLE[language], "", body)


def model_page(model, language):
    title = OF_MODEL[language] % model.code
    way = f' | {BACK[language]}: <a href="parameters.html">{TITLE[language]}</a>'
    body = [f'<h1 id="{model.code}">{title}</h1>']
    for number, section in enumerate(ModelReference(model, language).sections(), 1):
        body += [f'<h2 id="block-{number}">{escape(section.title)}</h2>',
                 *([f"<p>{section.option}</p>"] if section.option else []),
                 "<table>", _line("th", HEADINGS[language]), *(_html_row(row) for row in section.rows), "</table>"]
    return page(language, title, way, body)


def _html_row(row):
    cells = [escape(text) for text in _cells(row)]
    if row.table:
        cells[4] = f'<a href="parameters.html#{row.table}">{cells[4]}</a>'
    return _line("td", cells).replace("<td>", f'<td id="{row.tag}">', 1)


def _line(element, texts):
    return "<tr>" + "".join(f"<{element}>{text}</{element}>" for text in texts) + "</tr>"


def _cells(row):
    return row.tag, row.name, row.other_name, row.unit, row.limits, row.default, row.kind


def markdown_page(model):
    lines = [f"# {OF_MODEL[ENGLISH] % model.code}", "", f"{model.about[0].upper()}{model.about[1:]}. Written by `tools/definitions/make_reference.py`."]
    for section in ModelReference(model, ENGLISH).sections():
        lines += ["", f"## {section.title}", "", *([section.option, ""] if section.option else []),
                  *_markdown_table(HEADINGS[ENGLISH], (_cells(row) for row in section.rows))]
    return "\n".join(lines) + "\n"


def _markdown_table(headings, rows):
    return [_markdown_line(headings), "|---" * len(headings) + "|", *(_markdown_line(row) for row in rows)]


def _markdown_line(texts):
    return "| " + " | ".join(texts) + " |"


def manual_pages():
    for language, (folder, _) in ((ENGLISH, LANGUAGES[ENGLISH]), (JAPANESE, LANGUAGES[JAPANESE])):
        yield f"{folder}/parameters.html", contents_page(language)
        for model in MODELS:
            yield f"{folder}/{page_name(model)}", model_page(model, language)


def markdown_tables():
    lines = [f"# {TABLES[ENGLISH]}"]
    for table in selection_tables(ENGLISH):
        lines += ["", f"## {table.title}", "", *_markdown_table(table.headings, table.rows)]
    return "\n".join(lines) + "\n"


def documents():
    return [*((f"{model.code}.md", markdown_page(model)) for model in MODELS), ("selections.md", markdown_tables())]


def write(folder, pages):
    for name, text in pages:
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")


def out_of_date(folder):
    """Names of the files that are missing, differ, or belong to no model."""
    wanted = dict(documents())
    there = {file.name: file.read_text(encoding="utf-8") for file in folder.glob("*.md")}
    return sorted(name for name in wanted.keys() | there.keys() if wanted.get(name) != there.get(name))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    what = parser.add_mutually_exclusive_group(required=True)
    for option in ("--manual", "--documents", "--check"):
        what.add_argument(option, type=Path, metavar="FOLDER")
    given = parser.parse_args()
    if given.manual:
        write(given.manual, manual_pages())
    elif given.documents:
        write(given.documents, documents())
    elif stale := out_of_date(given.check):
        print(f"out of date in {given.check}: {', '.join(stale)}",
              f"Write them with: {sys.argv[0]} --documents {given.check}", sep="\n")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
