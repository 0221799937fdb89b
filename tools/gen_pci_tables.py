#!/usr/bin/env python3
"""Writes src/sysinfo/PciTables.cpp, the vendor and device tables of the PCI
catalogue, from a PCI id list (Debian's pci.ids, package "pciutils"/"pci.ids").

    tools/gen_pci_tables.py [--pci-ids /usr/share/misc/pci.ids] [--out src/sysinfo/PciTables.cpp]

The tables keep the catalogue's historical shape:
  - vendors: 578 rows ascending by id, 0x003D and 0x0E11 first, 0xEAD8 last,
    two ids (0x1097, 0x10AF) present twice with the older naming first, then the
    0xFFFF sentinel;
  - devices: 521 rows grouped by vendor, ascending within a vendor except that a
    vendor's second rows for an already listed device come at the end of its
    group; eight (vendor, device) pairs twice; 130 rows without a chip name and
    33 without a description; then the 0xFFFF/0x0140 sentinel.
The fixed rows below are written exactly as the catalogue has always had them;
every other row is picked from the id list: first the devices of common PCs and
virtual machines, then the remaining space goes to the oldest vendors (lowest
ids) and their lowest device ids, which is the late-nineties hardware the
catalogue was made for. The output depends only on the input file.
Python 3, standard library only.
"""

import argparse
import re
import sys

VENDOR_ROWS = 578
DEVICE_ROWS = 521
DEVICE_ROWS_WITHOUT_CHIP = 130
DEVICE_ROWS_WITHOUT_DESCRIPTION = 33
MAX_SHORT_NAME = 20

FIRST_VENDORS = [
    (0x003D, "Lockheed Martin", "Lockheed Martin Corp"),
    (0x0E11, "Compaq", "Compaq"),
]
LAST_VENDOR = (0xEAD8, "ARC", "ARC Logic")
VENDOR_SENTINEL = (0xFFFF, "BAD!", "ILLEGITIMATE VENDOR ID")

# Rows written exactly so; where an id occurs twice, the first row is the one
# the look-up finds.
FIXED_VENDORS = [
    (0x1097, "Appian", "Appian Technology"),
    (0x1097, "Appian", "Appian Graphics"),
    (0x10AF, "MCS", "Micro Computer Systems, Inc."),
    (0x10AF, "MS", "Microcomputer Sysytems"),
    (0x5333, "S3", "S3 Incorporated"),
]

# Vendors whose ids lie beyond the oldest ones: the era's 3Dlabs and ESS, and
# the makers of current PCs and virtual machines, so that today's machines are
# mostly named.
EXTRA_VENDORS = [
    0x3D3D, 0x125D,
    0x1022, 0x1002, 0x10DE, 0x10EC, 0x1414, 0x144D, 0x14E4, 0x15AD, 0x15B3, 0x168C,
    0x1969, 0x1A03, 0x1AB8, 0x1AE0, 0x1AF4, 0x1B21, 0x1B36, 0x1B4B, 0x1C5C, 0x1D0F,
    0x1E0F, 0x126F, 0x1987, 0x2646, 0x1179, 0x1217, 0x1180, 0x17CB, 0x1028, 0x103C,
    0x5853, 0x80EE, 0x8086, 0x9004, 0x9005, 0x1912, 0x1234,
]

# Ids the installed list may lack (QEMU's standard VGA is registered by the
# emulator's authors, not in every edition of the list).
SUPPLEMENT_VENDORS = {0x1234: "QEMU"}
SUPPLEMENT_DEVICES = {(0x1234, 0x1111): "Standard VGA"}

# (vendor, device, chip name, description), written exactly so.
FIXED_DEVICES = [
    (0x0E11, 0x0001, "EISA Bridge", ""),
    (0x1002, 0x4758, "ATI PCP", "ATI PCP"),
    (0x5333, 0x5631, "86C325", "Virge 3D GUI Accelerator"),
    (0x8086, 0x7110, "82371AB", "PIIX4 ISA Bridge"),
    (0x9004, 0x8278, "AHA-3940U/UW", "Multiple SCSI channels"),
]
# Second rows for listed devices; never found by the look-up.
FIXED_SECOND_DEVICES = [
    (0x1002, 0x4758, "210888GX", "Mach 64 (WinTurbo)"),
    (0x8086, 0x7110, "Fireball", "Fireball"),
]
# Devices whose second row is named after the first board built on them.
SECOND_ROW_FROM_BOARD = [
    (0x1011, 0x0019), (0x102B, 0x0525), (0x10DE, 0x0020),
    (0x1102, 0x0002), (0x121A, 0x0005), (0x5333, 0x8A01),
]
DEVICE_SENTINEL = (0xFFFF, 0x0140, "BAD", "Buslogic BT-946")

# Devices picked by id before the filling: the era's chip sets and adapters of
# the big vendors (whose lowest ids are recent parts), and what current PCs and
# virtual machines show.
PREFERRED_DEVICES = {
    0x1002: [0x4158, 0x4354, 0x4358, 0x4742, 0x4744, 0x4749, 0x4750, 0x4755, 0x4756,
             0x475A, 0x4C42, 0x5245, 0x5246, 0x5046, 0x5144, 0x5654],
    0x1022: [0x2000, 0x2001, 0x2020, 0x7006, 0x7007, 0x7400, 0x7409, 0x740B, 0x1450,
             0x1480, 0x1481, 0x1483, 0x790B, 0x790E, 0x43BC],
    0x8086: [0x0482, 0x0484, 0x0486, 0x1229, 0x1230, 0x1237, 0x122D, 0x122E, 0x1250,
             0x1960, 0x7000, 0x7010, 0x7020, 0x7030, 0x7100, 0x7111, 0x7112,
             0x7113, 0x7180, 0x7181, 0x7190, 0x7191, 0x7192, 0x7800, 0x84C4, 0x84C5,
             0x2410, 0x2411, 0x2412, 0x2413, 0x2415, 0x2418, 0x1130, 0x100E, 0x10D3,
             0x29C0, 0x2918, 0x2922, 0x2930, 0x2934, 0x293A, 0x24CD, 0x15B8, 0x153A],
    0x10DE: [0x0008, 0x0018, 0x0020, 0x0028, 0x002D, 0x00A0, 0x0100, 0x0110],
    0x10EC: [0x8029, 0x8139, 0x8168, 0x8136, 0x5229],
    0x1414: [0x5353],
    0x144D: [0xA802, 0xA804, 0xA808],
    0x14E4: [0x1644, 0x1647, 0x165F, 0x16D8, 0x43A0],
    0x15AD: [0x0405, 0x0740, 0x0770, 0x0774, 0x0779, 0x0790, 0x07A0, 0x07B0, 0x07C0,
             0x07E0, 0x07F0, 0x1976],
    0x15B3: [0x1013, 0x1015, 0x1017],
    0x168C: [0x0013, 0x002B, 0x003E],
    0x1A03: [0x2000],
    0x1AE0: [0x0042],
    0x1AF4: [0x1000, 0x1001, 0x1002, 0x1003, 0x1004, 0x1005, 0x1009, 0x1041, 0x1042,
             0x1043, 0x1044, 0x1045, 0x1048, 0x1049, 0x1050, 0x1052, 0x1053],
    0x1B21: [0x0612, 0x1142],
    0x1B36: [0x0001, 0x0002, 0x0008, 0x000C, 0x000D, 0x0010, 0x0100],
    0x1B4B: [0x9172],
    0x1D0F: [0x8061, 0xEC20, 0x1111],
    0x1234: [0x1111],
    0x5853: [0x0001],
    0x80EE: [0xBEEF, 0xCAFE],
    0x9004: [0x5078, 0x7178, 0x8178],
    0x9005: [0x001F, 0x0080],
    0x1013: [0x00B8, 0x00A8, 0x00BC],
}

# The era's big names get their lowest device ids first, this many each.
ERA_VENDOR_DEVICES = {
    0x1000: 12, 0x100C: 4, 0x1011: 10, 0x1023: 6, 0x102B: 8, 0x102C: 4, 0x1039: 10,
    0x104B: 3, 0x104C: 4, 0x1045: 4, 0x105A: 4, 0x105D: 4, 0x1073: 3, 0x1077: 4,
    0x1095: 4, 0x10B7: 8, 0x10B9: 8, 0x10C8: 4, 0x1102: 3, 0x1106: 10, 0x1163: 2,
    0x121A: 5, 0x1274: 4, 0x125D: 4, 0x3D3D: 4, 0x5333: 12, 0x9004: 8,
}

# Words that say what kind of company a vendor is, not who it is.
COMPANY_SUFFIXES = [
    "incorporated", "inc", "corporation", "corp", "co", "company", "ltd", "limited",
    "llc", "gmbh", "ag", "sa", "s.a", "bv", "b.v", "nv", "plc", "kk", "pty", "srl",
    "s.r.l", "spa", "oy", "ab", "as", "a/s", "se", "pte", "sas",
]
GENERIC_FIRST_WORDS = {
    "the", "advanced", "american", "applied", "digital", "general", "integrated",
    "international", "national", "new", "silicon", "united", "data", "micro",
    "computer", "network", "system", "systems", "image", "video", "intelligent",
}


def parse_pci_ids(path):
    vendors = {}
    devices = {}
    boards = {}
    current = None
    with open(path, encoding="utf-8", errors="replace") as ids:
        for line in ids:
            line = line.rstrip("\n")
            if line.startswith("C "):
                break
            match = re.match(r"^([0-9a-f]{4})  (.+)$", line)
            if match:
                current = int(match.group(1), 16)
                vendors[current] = match.group(2).strip()
                devices[current] = {}
                continue
            match = re.match(r"^\t([0-9a-f]{4})  (.+)$", line)
            if match and current is not None:
                device = int(match.group(1), 16)
                devices[current][device] = match.group(2).strip()
                continue
            match = re.match(r"^\t\t([0-9a-f]{4}) ([0-9a-f]{4})  (.+)$", line)
            if match and current is not None and devices[current]:
                last = list(devices[current])[-1]
                boards.setdefault((current, last), match.group(3).strip())
    for vendor, name in SUPPLEMENT_VENDORS.items():
        vendors.setdefault(vendor, name)
        devices.setdefault(vendor, {})
    for (vendor, device), name in SUPPLEMENT_DEVICES.items():
        devices[vendor].setdefault(device, name)
    return vendors, devices, boards


def strip_company_suffix(name):
    words = name.replace(",", " ").split()
    while len(words) > 1 and words[-1].lower().rstrip(".") in COMPANY_SUFFIXES:
        words.pop()
    return " ".join(words)


def vendor_names(name):
    """(short, long) from one list name: the bracketed abbreviation when there
    is one, else the name without its company suffix, cut to its leading word
    (two for generic ones) when that is too long."""
    bracket = re.search(r"\[([^\]]+)\]", name)
    long_name = re.sub(r"\s*\[[^\]]*\]", "", name).strip() or name
    if bracket and len(bracket.group(1)) <= MAX_SHORT_NAME:
        return bracket.group(1), long_name
    short = strip_company_suffix(long_name)
    if len(short) > MAX_SHORT_NAME:
        words = short.split()
        short = words[0]
        two = " ".join(words[:2])
        if (short.lower() in GENERIC_FIRST_WORDS or len(short) <= 2) and len(two) <= MAX_SHORT_NAME:
            short = two
        short = short.rstrip(",.")
    return short, long_name


def looks_like_part_number(word):
    return (len(word) >= 3 and any(c.isdigit() for c in word)
            and not word.startswith("(") and not word.endswith(":"))


def device_names(name):
    """(chip name, description) from one list name: a leading part number is
    the chip, the rest (or the bracketed marketing name) the description; a
    name that is only a part number has no description; any other name has no
    chip name."""
    words = name.split()
    if len(words) == 1 and looks_like_part_number(words[0]):
        return words[0], ""
    if len(words) > 1 and looks_like_part_number(words[0]):
        rest = " ".join(words[1:]).lstrip("- ")
        if rest.startswith("[") and rest.endswith("]") and rest.count("[") == 1:
            rest = rest[1:-1]
        if rest.startswith("/") or len(rest) <= 3:
            # "AHA-294x / AIC-7870", "RL5c476 II": the name says more whole.
            rest = name
        return words[0].rstrip(","), rest
    return "", name


def category(row):
    if not row[2]:
        return "nochip"
    if not row[3]:
        return "nodesc"
    return "both"


def select_vendors(vendors):
    fixed_ids = {row[0] for row in FIXED_VENDORS}
    first_ids = {row[0] for row in FIRST_VENDORS}
    chosen = set(EXTRA_VENDORS) | fixed_ids | set(PREFERRED_DEVICES) | set(ERA_VENDOR_DEVICES)
    chosen |= {row[0] for row in FIXED_DEVICES + FIXED_SECOND_DEVICES}
    chosen |= {vendor for vendor, _ in SECOND_ROW_FROM_BOARD}
    chosen -= first_ids
    low = FIRST_VENDORS[1][0]
    high = LAST_VENDOR[0]
    # Rows between the first ones and the last one, less the repeated rows.
    wanted = VENDOR_ROWS - len(first_ids) - 1 - (len(FIXED_VENDORS) - len(fixed_ids))
    for vendor in sorted(vendors):
        if len(chosen) >= wanted:
            break
        if low < vendor < high:
            chosen.add(vendor)
    rows = list(FIRST_VENDORS)
    fixed_by_id = {}
    for row in FIXED_VENDORS:
        fixed_by_id.setdefault(row[0], []).append(row)
    for vendor in sorted(chosen):
        if vendor in fixed_by_id:
            rows.extend(fixed_by_id[vendor])
        else:
            rows.append((vendor,) + vendor_names(vendors[vendor]))
    rows.append(LAST_VENDOR)
    return rows


def select_devices(vendor_ids, devices, boards):
    quota = {
        "nochip": DEVICE_ROWS_WITHOUT_CHIP,
        "nodesc": DEVICE_ROWS_WITHOUT_DESCRIPTION,
        "both": DEVICE_ROWS - DEVICE_ROWS_WITHOUT_CHIP - DEVICE_ROWS_WITHOUT_DESCRIPTION,
    }
    first = {}
    second = []

    def take(row, forced=False):
        kind = category(row)
        if not forced and quota[kind] <= 0:
            return False
        quota[kind] -= 1
        return True

    for row in FIXED_DEVICES:
        take(row, True)
        first[(row[0], row[1])] = row
    for row in FIXED_SECOND_DEVICES:
        take(row, True)
        second.append(row)
    for vendor, device in SECOND_ROW_FROM_BOARD:
        name = devices[vendor][device]
        row = (vendor, device) + device_names(name)
        take(row, True)
        first[(vendor, device)] = row
        board = (vendor, device, "", boards[(vendor, device)])
        take(board, True)
        second.append(board)

    def total():
        return len(first) + len(second)

    for vendor in sorted(PREFERRED_DEVICES):
        for device in PREFERRED_DEVICES[vendor]:
            if (vendor, device) in first or device not in devices[vendor]:
                continue
            row = (vendor, device) + device_names(devices[vendor][device])
            if take(row, True):
                first[(vendor, device)] = row

    for vendor in sorted(ERA_VENDOR_DEVICES):
        wanted = ERA_VENDOR_DEVICES[vendor]
        for device in sorted(devices[vendor]):
            if wanted <= 0:
                break
            if (vendor, device) in first:
                continue
            row = (vendor, device) + device_names(devices[vendor][device])
            if take(row):
                first[(vendor, device)] = row
                wanted -= 1

    # The rest: one more device of each old vendor per round, lowest ids first.
    # Vendors with chosen devices have theirs already.
    remaining = {v: sorted(devices.get(v, {})) for v in vendor_ids}
    for vendor in PREFERRED_DEVICES:
        remaining[vendor] = []
    progress = True
    while total() < DEVICE_ROWS and progress:
        progress = False
        for vendor in sorted(vendor_ids):
            if total() >= DEVICE_ROWS:
                break
            while remaining[vendor]:
                device = remaining[vendor].pop(0)
                if (vendor, device) in first:
                    continue
                row = (vendor, device) + device_names(devices[vendor][device])
                if take(row):
                    first[(vendor, device)] = row
                    progress = True
                    break
    if total() != DEVICE_ROWS or any(quota.values()):
        sys.exit("gen_pci_tables: could not fill the device table (%d rows, %r left)"
                 % (total(), quota))

    rows = []
    for vendor in sorted({key[0] for key in first}):
        rows.extend(first[key] for key in sorted(first) if key[0] == vendor)
        rows.extend(row for row in second if row[0] == vendor)
    return rows


def c_string(text):
    out = []
    for ch in text:
        if ch in '"\\':
            out.append("\\" + ch)
        elif ord(ch) < 0x20:
            out.append("\\x%02x" % ord(ch))
        else:
            out.append(ch)
    return '"' + "".join(out) + '"'


HEADER = """\
// Generated by tools/gen_pci_tables.py from the PCI id list (pci.ids); do not
// edit. Rebuild from the repository's top folder with:
//     tools/gen_pci_tables.py --pci-ids /usr/share/misc/pci.ids
// Source list: {source}
#include "sysinfo/PciTables.h"

// clang-format off
"""


def write_tables(out, vendor_rows, device_rows, source):
    out.write(HEADER.format(source=source))
    out.write("// %d rows ascending by id; a repeated id is found by its first row.\n"
              % len(vendor_rows))
    out.write("const pciVendorRow kPciVendors[] = {\n")
    for vendor, short, long_name in vendor_rows + [VENDOR_SENTINEL]:
        out.write("\t{0x%04X, %s, %s},\n" % (vendor, c_string(short), c_string(long_name)))
    out.write("};\n\n")
    out.write("// %d rows grouped by vendor; a repeated device is found by its first row.\n"
              % len(device_rows))
    out.write("const pciDeviceRow kPciDevices[] = {\n")
    for vendor, device, chip, description in device_rows + [DEVICE_SENTINEL]:
        out.write("\t{0x%04X, 0x%04X, %s, %s},\n"
                  % (vendor, device, c_string(chip), c_string(description)))
    out.write("};\n\n")
    out.write("const int32 kPciVendorRows = %d;\n" % len(vendor_rows))
    out.write("const int32 kPciDeviceRows = %d;\n" % len(device_rows))
    out.write("// clang-format on\n")


def check(vendor_rows, device_rows):
    assert len(vendor_rows) == VENDOR_ROWS, len(vendor_rows)
    assert len(device_rows) == DEVICE_ROWS, len(device_rows)
    ids = [row[0] for row in vendor_rows]
    assert ids == sorted(ids)
    assert all(row[1] and row[2] for row in vendor_rows)
    assert {row[0] for row in device_rows} <= set(ids)
    assert sum(1 for row in device_rows if not row[2]) == DEVICE_ROWS_WITHOUT_CHIP
    assert sum(1 for row in device_rows if not row[3]) == DEVICE_ROWS_WITHOUT_DESCRIPTION
    pairs = [(row[0], row[1]) for row in device_rows]
    assert len(pairs) - len(set(pairs)) == 8


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--pci-ids", default="/usr/share/misc/pci.ids")
    parser.add_argument("--out", default="src/sysinfo/PciTables.cpp")
    args = parser.parse_args()

    vendors, devices, boards = parse_pci_ids(args.pci_ids)
    source = "pci.ids"
    with open(args.pci_ids, encoding="utf-8", errors="replace") as ids:
        for line in ids:
            match = re.match(r"#\s*Version:\s*(\S+)", line)
            if match:
                source = "pci.ids version " + match.group(1)
                break
    vendor_rows = select_vendors(vendors)
    device_rows = select_devices({row[0] for row in vendor_rows}, devices, boards)
    check(vendor_rows, device_rows)
    with open(args.out, "w", encoding="utf-8") as out:
        write_tables(out, vendor_rows, device_rows, source)


if __name__ == "__main__":
    main()
