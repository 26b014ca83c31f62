"""Checks docs/export-format.md, its schemas and its samples against archives that vorn-export makes.

Usage: export_format_test.py BIN, the folder of the programs"""
import copy
import json
import os
import subprocess
import tempfile
import unittest
import zipfile

import jsonschema

from documents import BIN, ROOT, code_blocks, output_of, read, section, tables

DOCUMENT = read("docs/export-format.md")
ENTRIES = ["vorn-nimbrel-export.json", "vorn-nimbrel-messages.json"]
SCHEMAS = {entry: json.loads(read(f"docs/schemas/{entry.replace('.json', '.schema.json')}")) for entry in ENTRIES}
SAMPLES = {entry: json.loads(read(f"docs/samples/{entry}")) for entry in ENTRIES}


def first_answers(entry, documents):
    validator = jsonschema.Draft202012Validator(SCHEMAS[entry])
    return [validator.is_valid(document) for document in documents]


def second_answers(entry, documents):
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", suffix=".json") as file:
        json.dump(documents, file)
        file.flush()
        script = os.path.join(ROOT, "tests/documents/second_validator.pl")
        schema = os.path.join(ROOT, "docs/schemas", entry.replace(".json", ".schema.json"))
        answer = subprocess.run(["perl", script, schema, file.name], check=True, capture_output=True, text=True)
    return [line == "valid" for line in answer.stdout.splitlines()]


def objects_in(value):
    if isinstance(value, dict):
        yield value
    for inner in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        yield from objects_in(inner)


def copies(document, change):
    """A copy of `document` for each way in which `change` changes one of its objects."""
    for index, original in enumerate(objects_in(document)):
        for key in [None, *original]:
            changed = copy.deepcopy(document)
            if change(list(objects_in(changed))[index], key):
                yield changed


def with_another_key(item, key):
    if key is None:
        item["another"] = 1
    return key is None


def without_a_key(item, key):
    reasons = SCHEMAS[ENTRIES[0]]["properties"]["skipped"]["properties"]
    if key is None or key in reasons:  # those that did not occur are absent
        return False
    del item[key]
    return True


def with_another_type(item, key):
    if key is None:
        return False
    item[key] = 1.5
    return True


class ExportFormat(unittest.TestCase):
    def archive(self, folder, *options):
        """The documents of an archive of a made-up history, and the archive's entries."""
        database, output = os.path.join(folder, "chat.db"), os.path.join(folder, "out.zip")
        output_of("vorn-sample-history", "--force", "--output", database, "--handle", "+15550102030", *options)
        output_of("vorn-export", "--database", database, "--handle", "+15550102030", "--output", output)
        with zipfile.ZipFile(output) as archive:
            return {name: archive.read(name) for name in archive.namelist()}, archive.infolist()

    def accept(self, entry, documents):
        expected = [True] * len(documents)
        self.assertEqual(first_answers(entry, documents), expected, entry)
        self.assertEqual(second_answers(entry, documents), expected, entry)

    def refuse(self, entry, documents):
        expected = [False] * len(documents)
        self.assertGreater(len(documents), 0)
        self.assertEqual(first_answers(entry, documents), expected, entry)
        self.assertEqual(second_answers(entry, documents), expected, entry)

    def test_schemas_are_schemas(self):
        for schema in SCHEMAS.values():
            jsonschema.Draft202012Validator.check_schema(schema)

    def test_both_validators_accept_real_archives(self):
        with tempfile.TemporaryDirectory() as folder:
            for options in (["--messages", "3000"], ["--messages", "500", "--seed", "2"], ["--messages", "1"]):
                documents, infos = self.archive(folder, *options)
                self.assertEqual(list(documents), ENTRIES)
                self.assertEqual({(info.extra, info.comment) for info in infos}, {(b"", b"")})
                for entry, data in documents.items():
                    document = json.loads(data)
                    again = json.dumps(document, sort_keys=True, separators=(",", ":"), ensure_ascii=False)
                    self.assertEqual(again.encode(), data, "sorted, compact, in UTF-8")
                    self.accept(entry, [document])

    def test_both_validators_accept_an_empty_one(self):
        with tempfile.TemporaryDirectory() as folder:
            database, output = os.path.join(folder, "chat.db"), os.path.join(folder, "out.zip")
            output_of("vorn-sample-history", "--output", database, "--messages", "20", "--handle", "+15550102030")
            output_of("vorn-export", "--database", database, "--handle", "nobody@example.com", "--output", output,
                      "--allow-empty")
            with zipfile.ZipFile(output) as archive:
                for entry in ENTRIES:
                    self.accept(entry, [json.loads(archive.read(entry))])

    def test_both_validators_refuse_a_key_more_or_less_and_another_type(self):
        for entry, sample in SAMPLES.items():
            self.accept(entry, [sample])
            for change in (with_another_key, without_a_key, with_another_type):
                self.refuse(entry, list(copies(sample, change)))

    def test_samples_are_what_the_commands_make(self):
        commands = code_blocks(section(DOCUMENT, "Make the samples"))[0]
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["bash", "-euc", commands], check=True, capture_output=True, cwd=folder,
                           env={**os.environ, "PATH": BIN + ":" + os.environ["PATH"]})
            made = {}
            for entry in ENTRIES:
                with open(os.path.join(folder, entry), encoding="utf-8") as file:
                    made[entry] = json.load(file)
            check = code_blocks(section(DOCUMENT, "Check an archive"))[0]
            check = check.replace("docs/schemas", f"{ROOT}/docs/schemas")
            subprocess.run(["bash", "-euc", check], check=True, capture_output=True, cwd=folder)
        made[ENTRIES[0]]["exporter"]["os"] = SAMPLES[ENTRIES[0]]["exporter"]["os"]
        self.assertEqual(made, SAMPLES)

    def test_samples_show_what_there_is(self):
        messages = SAMPLES[ENTRIES[1]]
        for key in messages[0]:
            self.assertTrue(any(message[key] for message in messages), key)

    def test_tables_have_the_keys_of_the_schemas(self):
        manifest, reasons = tables(section(DOCUMENT, "The manifest"))
        messages, = tables(section(DOCUMENT, "The messages"))
        of_manifest = SCHEMAS[ENTRIES[0]]["properties"]
        for table, keys in ((manifest, of_manifest), (reasons, of_manifest["skipped"]["properties"]),
                            (messages, SCHEMAS[ENTRIES[1]]["items"]["properties"])):
            self.assertEqual([row[0].strip("`") for row in table[1:]], sorted(keys))


if __name__ == "__main__":
    unittest.main()
