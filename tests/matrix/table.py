"""The table of all results, in Markdown."""

TITLES = {"window": "Windows", "tray": "Trays", "session": "Wayland sessions"}


def section(title, results):
    notes = []

    def cell(result, behaviour):
        found = next((c for c in result["cells"] if c["behaviour"] == behaviour), None)
        if found is None:
            # Not every desktop has what it takes.
            found = {"word": "not run" if result["reason"] else "–", "seen": result["reason"]}
        if not found["seen"]:
            return found["word"]
        notes.append(f"{len(notes) + 1}. {result['host']}, {behaviour}: {found['seen']}")
        return f"{found['word']} ({len(notes)})"

    behaviours = list(dict.fromkeys(c["behaviour"] for r in results for c in r["cells"]))
    lines = [f"## {title}", "",
             "| | " + " | ".join(r["host"] for r in results) + " |",
             "|---" * (len(results) + 1) + "|",
             "| version | " + " | ".join(r["version"] for r in results) + " |",
             "| run on | " + " | ".join(r["date"] for r in results) + " |",
             "| pictures | " + " | ".join(f"[all]({r['host']}.png)" for r in results) + " |"]
    if any(result["kind"] == "tray" for result in results):
        lines.append("| the item, four times as large | " +
                     " | ".join(f"![]({r['host']}/item.png)" for r in results) + " |")
    for behaviour in behaviours:
        lines.append(f"| {behaviour} | " +
                     " | ".join(cell(result, behaviour) for result in results) + " |")
    return lines + [""] + notes + ([""] if notes else [])


def table(results):
    lines = ["# Desktops", ""]
    for kind, title in TITLES.items():
        of_kind = [result for result in results if result["kind"] == kind]
        if of_kind:
            lines += section(title, of_kind)
    return "\n".join(lines)
