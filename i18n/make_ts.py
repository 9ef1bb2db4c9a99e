#!/usr/bin/env python3
"""Writes the "Localizable" tables Localizable_en.ts and Localizable_zh_CN.ts from
Localizable.json (key -> [English, Simplified Chinese]). Edit the JSON, then run this script."""
import json
import pathlib
from xml.sax.saxutils import escape

here = pathlib.Path(__file__).resolve().parent
texts = json.loads((here / "Localizable.json").read_text(encoding="utf-8"))
for index, lang in ((0, "en"), (1, "zh_CN")):
    lines = ['<?xml version="1.0" encoding="utf-8"?>', "<!DOCTYPE TS>",
             f'<TS version="2.1" language="{lang}">', "<context>", "    <name>Localizable</name>"]
    for key in sorted(texts):
        lines += [f'    <message id="{escape(key)}">',
                  f"        <source>{escape(texts[key][0])}</source>",
                  f"        <translation>{escape(texts[key][index])}</translation>",
                  "    </message>"]
    lines += ["</context>", "</TS>", ""]
    (here / f"Localizable_{lang}.ts").write_text("\n".join(lines), encoding="utf-8")
