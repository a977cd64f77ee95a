#!/usr/bin/env python3
"""Checks that the text numbers and the catalogues agree.

usage: check_texts.py [--header FILE] [--texts FOLDER]

Prints one line per fault (file, number, what is wrong) and ends with status 1 when there is any.
Without options it checks the tree that it stands in.
"""

import argparse
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

# Enumerators that are no texts: the absence of one, and the mark before the host's own.
MARKERS = {"None", "HostFirst"}
ENUMERATOR = re.compile(r"^\s*([A-Za-z]\w*)\s*=\s*(\d+)\s*,", re.MULTILINE)
PLACEHOLDER = re.compile(r"%[sd]")


def ascending_faults(where, numbers):
    """The numbers that don't come after the one before them, which finds doubles too."""
    for before, number in zip(numbers, numbers[1:]):
        if number <= before:
            yield f"{where}: {number} stands after {before}; sort the numbers, each once"


def header_numbers(path):
    """The numbers of the enumeration in their order, and the faults of that order."""
    body = re.search(r"enum class TextId[^{]*\{(.*?)\};", path.read_text(encoding="utf-8"), re.DOTALL)
    if body is None:
        return [], [f"{path.name}: no enumeration TextId"]
    entries = [(name, int(number)) for name, number in ENUMERATOR.findall(body.group(1))]
    faults = list(ascending_faults(path.name, [number for _, number in entries]))
    names = [name for name, _ in entries]
    faults += [f"{path.name}: {name} stands twice" for name in sorted(set(names))
               if names.count(name) > 1]
    return [number for name, number in entries if name not in MARKERS], faults


def text_faults(where, arguments, text):
    """What is wrong with one text of a catalogue."""
    if not text.strip():
        yield f"{where}: the text is empty"
    elif text != text.strip():
        yield f"{where}: the text begins or ends with a blank"
    if "%" in PLACEHOLDER.sub("", text):
        yield f'{where}: "%" that is neither %s nor %d'
    placeholders = ",".join(PLACEHOLDER.findall(text))
    if placeholders != arguments:
        yield f'{where}: args is "{arguments}", the text has "{placeholders}"'


def read_catalogue(path):
    """A dictionary from number to args of one catalogue (None: unreadable), and its faults."""
    try:
        root = ElementTree.parse(path).getroot()
    except ElementTree.ParseError as error:
        return None, [f"{path.name}: not valid XML: {error}"]
    faults = []
    if root.tag != "texts" or root.get("language") != path.stem:
        faults.append(f'{path.name}: the root must be <texts language="{path.stem}">')
    arguments = {}
    numbers = []
    for element in root:
        number = element.get("id", "")
        if element.tag != "text" or not number.isdecimal() or len(element):
            faults.append(f"{path.name}: <{element.tag}> after {numbers[-1:]} is no plain numbered text")
            continue
        numbers.append(int(number))
        arguments[int(number)] = element.get("args", "")
        faults += text_faults(f"{path.name}: {number}", element.get("args", ""), element.text or "")
    return arguments, faults + list(ascending_faults(path.name, numbers))


def agreement_faults(header, numbers, catalogues):
    """Where a catalogue and the enumeration, or two catalogues, don't agree."""
    for language, arguments in catalogues.items():
        for number in sorted(set(numbers) - set(arguments)):
            yield f"{language}: {number} of {header} is missing"
        for number in sorted(set(arguments) - set(numbers)):
            yield f"{language}: {number} is not in {header}"
    first, *others = catalogues
    for language in others:
        for number in sorted(set(catalogues[first]) & set(catalogues[language])):
            if catalogues[first][number] != catalogues[language][number]:
                yield f"{language}: {number} takes other arguments than in {first}"


def main():
    tree = pathlib.Path(__file__).resolve().parent.parent
    options = argparse.ArgumentParser(description="Checks text numbers against the catalogues.")
    options.add_argument("--header", type=pathlib.Path, default=tree / "host/resources/text_id.h")
    options.add_argument("--texts", type=pathlib.Path, default=tree / "resources/texts")
    arguments = options.parse_args()

    numbers, faults = header_numbers(arguments.header)
    catalogues = {}
    for path in sorted(arguments.texts.glob("*.xml")):
        catalogue, catalogue_faults = read_catalogue(path)
        faults += catalogue_faults
        if catalogue is not None:
            catalogues[path.name] = catalogue
    if len(catalogues) < 2:
        faults.append(f"{arguments.texts}: fewer than two readable catalogues")
    if catalogues:
        faults += agreement_faults(arguments.header.name, numbers, catalogues)
    if not numbers:
        faults.append(f"{arguments.header.name}: no text number found")

    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        print(f"{len(numbers)} texts in {len(catalogues)} languages")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
