#!/usr/bin/env python3
"""Writes the "Localizable" tables Localizable_en.ts and Localizable_zh_CN.ts from
Localizable.json and every Localizable.<area>.json beside it (key -> [English, Simplified
Chinese]; a key may stand in one file only). Edit the JSON, then run this script."""
import json
import pathlib
from xml.sax.saxutils import escape

here = pathlib.Path(__file__).resolve().parent
texts = {}
for source in sorted(here.glob("Localizable*.json")):
    for key, value in json.loads(source.read_text(encoding="utf-8")).items():
        if key in texts:
            raise SystemExit(f"{source.name}: {key} is defined twice")
        texts[key] = value
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
