#!/usr/bin/env python3
"""Regenerates the bundled demo job: job.ini, demo.sif and "Harbor Point Offices.cif".

The demo is a dealer's project for the new offices of an insurance company: reception,
an open office floor, a board room, private offices and a break room, furnished from three
(invented) manufacturers. The output is deterministic: the catalogue and the order lines below are
fixed, and the only random choice (which items carry a record number) uses a fixed seed.

All three files are written the way the parent application writes them: Windows-1252,
CR LF after every line including the last. Money is computed with Decimal so that the
header totals and the subtotal rows are exact sums of what the item lines say; after writing,
the files are read back and re-added as a check.

Usage: python3 make_demo.py   (writes beside this script)
"""

import random
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

HERE = Path(__file__).resolve().parent
SEED = 20261120
CENT = Decimal("0.01")

# Manufacturer code -> (customer discount S-, dealer discount P%) of the project quote.
DISCOUNTS = {
    "KSW": (Decimal("52"), Decimal("61.5")),  # Kestrel Seating Works
    "LWS": (Decimal("55.5"), Decimal("64")),  # Lindqvist Workplace Systems
    "BSC": (Decimal("48"), Decimal("58")),  # Brantmoor Storage Company
}

# Part number -> (manufacturer, description, unit list, unit weight lb, unit volume cu ft,
# model description or None).
CATALOG = {
    # Kestrel Seating Works: seating
    "VT210-MB": ("KSW", 'Vela Task Chair, Synchro-Tilt, Adjustable Arms and Lumbar, Mesh Back, '
                 'Upholstered Seat, 26"W x 25"D', "1148.00", "48.5", "9.6", "Vela Task"),
    "VT210-HR": ("KSW", 'Vela Task Chair with Headrest, Synchro-Tilt, 4D Arms, Mesh Back, '
                 'Upholstered Seat', "1326.00", "52", "10.4", "Vela Task"),
    "MS440": ("KSW", 'Marlow Side Chair, 4-Leg, Upholstered Seat and Back, Arms, '
              '23"W x 22"D x 33"H', "689.00", "22", "6.8", None),
    "HL2-1S": ("KSW", 'Halyard Lounge Chair, Single Seat, Wood Legs, 31"W x 30"D x 29"H',
               "2150.00", "58", "21", "Halyard Lounge"),
    "HL2-3S": ("KSW", 'Halyard Sofa, Three Seat, Wood Legs, 84"W x 30"D x 29"H', "4375.00",
               "142", "48.5", "Halyard Lounge"),
    "HL2-OT": ("KSW", 'Halyard Ottoman, 24"W x 24"D x 17"H', "795.00", "19", "7.2",
               "Halyard Lounge"),
    "CC620": ("KSW", 'Corvo Conference Chair, Mid Back, Fixed Arms, Polished Aluminum '
              'Five-Star Base, Tilt Lock, Hard Floor Casters', "1385.00", "41", "9.9", None),
    "TS18-C": ("KSW", 'Tern Stool, Counter Height, 25"H Seat, Footring', "512.00", "17",
               "3.1", None),
    "GS10": ("KSW", 'Gull Stacking Chair, Polypropylene Shell, Chrome Sled Base', "298.00",
             "12", "2.4", None),
    # Lindqvist Workplace Systems: desks, tables, screens and accessories
    "RD7236L": ("LWS", 'Cove Reception Station, L-Shape, Transaction Counter with ADA Section, '
                '72"W x 36"D x 42"H', "7850.00", "410", "64", "Cove Reception"),
    "OT2424": ("LWS", 'Occasional Table, Square, 24"W x 24"D x 20"H, Veneer Top', "968.00",
               "28", "6.7", None),
    "OT4824": ("LWS", 'Coffee Table, Rectangular, 48"W x 24"D x 16"H, Veneer Top', "1240.00",
               "46", "10.7", None),
    "HA6030": ("LWS", 'Height-Adjustable Desk, Dual Motor, 3-Stage Column, Programmable '
               'Handset, 60"W x 30"D, 25"-50"H', "2240.00", "118", "12.5", "Lift HA"),
    "HA7230": ("LWS", 'Height-Adjustable Desk, Dual Motor, 3-Stage Column, Programmable '
               'Handset, 72"W x 30"D, 25"-50"H', "2385.00", "131", "15", "Lift HA"),
    "SP6015": ("LWS", 'Privacy Screen, Desk Mounted, Acoustic Fabric, 60"W x 15"H', "386.00",
               "11", "1.6", None),
    "SP7215": ("LWS", 'Privacy Screen, Desk Mounted, Acoustic Fabric, 72"W x 15"H', "418.00",
               "13", "1.9", None),
    "PWR-HC2": ("LWS", 'Power Module, 2 Simplex Receptacles, 1 USB-A, 1 USB-C, Hardwire Ready',
                "245.00", "3", "0.2", None),
    "MA1-D": ("LWS", 'Monitor Arm, Single, Dynamic, Clamp Mount', "318.00", "7", "0.4", None),
    "MA2-D": ("LWS", 'Monitor Arm, Dual, Dynamic, Clamp Mount', "564.00", "12", "0.7", None),
    "CT60": ("LWS", 'Cable Tray, Under Surface, Steel, 60"W', "112.00", "6", "0.5", None),
    "CT72": ("LWS", 'Cable Tray, Under Surface, Steel, 72"W', "124.00", "7", "0.6", None),
    "RT42X": ("LWS", 'Round Table, 42" Dia, Laminate Top, X-Base, 29"H', "968.00", "54",
              "5.9", None),
    "HT9642": ("LWS", 'Collaboration Table, Standing Height, 96"W x 42"D x 42"H, Laminate Top, '
               'Center Power Rail', "3460.00", "196", "23.5", None),
    "WB4872": ("LWS", 'Mobile Whiteboard, Double-Sided, Magnetic, 48"W x 72"H', "1095.00",
               "64", "9.2", None),
    "AP6066": ("LWS", 'Freestanding Acoustic Panel, Felt, 60"W x 66"H', "742.00", "36", "3.4",
               None),
    "CF14448": ("LWS", 'Conference Table, Boat Shape, 144"W x 48"D x 29"H, Veneer Top, '
                '(2) Power/Data Units, Slab Bases', "8960.00", "385", "58", "Keel Conference"),
    "CA3636": ("LWS", 'Caf\u00e9 Table, Square, 36"W x 36"D x 29"H, Laminate Top, Disc Base',
               "689.00", "41", "4.8", None),
    # Brantmoor Storage Company: storage
    "LF3630-3": ("BSC", 'Lateral File, 3-Drawer, 36"W x 18"D x 40"H, Steel, Core Removable Lock',
                 "1265.00", "172", "15", None),
    "PD1523-BF": ("BSC", 'Mobile Pedestal, Box/File, Cushion Top, 15"W x 23"D x 22"H',
                  "548.00", "58", "4.4", None),
    "BK3672": ("BSC", 'Bookcase, 4 Adjustable Shelves, 36"W x 13"D x 72"H', "812.00", "96",
               "19.5", None),
    "LK1872-6": ("BSC", 'Personal Locker Tower, 6 Doors, Combination Locks, 18"W x 18"D x 72"H',
                 "2140.00", "188", "13.5", None),
    "SC3666": ("BSC", 'Storage Cabinet, 2 Doors, 5 Adjustable Shelves, 36"W x 18"D x 66"H',
               "1480.00", "165", "24.8", None),
    "CR7220": ("BSC", 'Credenza, Hinged Doors and Box/File Drawers, 72"W x 20"D x 29"H, '
               'Veneer Top', "2930.00", "240", "24.2", None),
    "WT2472": ("BSC", 'Wardrobe Tower, Coat Rod and Hat Shelf, 24"W x 24"D x 72"H', "1690.00",
               "142", "24", None),
    "MS36": ("BSC", 'Mail Sorter, 36 Slots, Adjustable Shelves, 36"W x 15"D x 42"H', "935.00",
             "88", "13.1", None),
}

# Option sets, as (option code, option description) pairs.
TASK_BLUE = [("GR3-HB", "FABRIC: Grade 3 Loop, Harbor Blue"), ("MB-GRA", "BACK: Mesh, Graphite"),
             ("FR-BLK", "FRAME: Black"), ("CS-HF", "CASTERS: Hard Floor")]
TASK_GREY = [("GR3-FG", "FABRIC: Grade 3 Loop, Fog"), ("MB-GRA", "BACK: Mesh, Graphite"),
             ("FR-BLK", "FRAME: Black"), ("CS-CP", "CASTERS: Carpet")]
LOUNGE = [("GR5-OAT", "FABRIC: Grade 5, Boucl\u00e9, Oat"), ("LG-WON", "LEGS: White Oak, Natural")]
DESK = [("LM-DWH", "TOP: Designer White Laminate"), ("BS-SLV", "BASE: Silver Metallic"),
        ("ED-FLT", "EDGE: Flat 3mm, Matching"), ("GR-2B", 'GROMMETS: (2) 2-1/2" Dia, Black')]
SCREEN = [("FB-SLT", "FABRIC: Acoustic Felt, Slate"), ("BR-SLV", "BRACKETS: Silver")]
STEEL = [("PT-CHR", "PAINT: Charcoal"), ("LK-KA", "LOCKS: Keyed Alike")]
VENEER = [("VN-WAL", "VENEER: Walnut, Natural"), ("PT-CHR", "PAINT: Charcoal")]

# Order lines in file order: (part number, quantity, area tag, second tag, options, extras).
# extras may hold "notes" (AN/AD pairs), "PE", "MD" override and "S-"/"P%" overrides.
RECEPTION = "Reception"
OPEN = "Open Office L2"
BOARD = "Board Room"
BREAK = "Break Room"
OFFICES = "Private Offices L2"

LINES = [
    ("RD7236L", 1, RECEPTION, "L1-Lobby",
     [("VN-WAL", "TOP: Walnut Veneer, Natural"), ("LM-DWH", "BODY: Designer White Laminate"),
      ("TC-QAL", "TRANSACTION: Quartz, Alpine"), ("GR-2B", 'GROMMETS: (2) 3" Dia, Black')],
     {"notes": [("FV", "Field verify wall dimensions before release"),
                ("ADA", "ADA section at 34\"H on left return")],
      "PE": "Left-hand ADA return"}),
    ("VT210-MB", 2, RECEPTION, "L1-Lobby", TASK_BLUE, {}),
    ("HL2-1S", 4, RECEPTION, "L1-Lobby", LOUNGE, {}),
    ("HL2-3S", 1, RECEPTION, "L1-Lobby", LOUNGE, {}),
    ("HL2-OT", 2, RECEPTION, "L1-Lobby", LOUNGE[:1], {}),
    ("OT2424", 3, RECEPTION, "L1-Lobby", [("VN-WAL", "TOP: Walnut Veneer, Natural")], {}),
    ("OT4824", 1, RECEPTION, "L1-Lobby", [("VN-WAL", "TOP: Walnut Veneer, Natural")], {}),
    ("MS440", 6, RECEPTION, "L1-Lobby",
     [("GR4-CL", "FABRIC: Grade 4 Vinyl, Clay"), ("FR-BLK", "FRAME: Black")], {}),
    ("MS36", 1, RECEPTION, "L1-Mailroom", STEEL[:1], {}),
    ("LF3630-3", 2, RECEPTION, "L1-Mailroom", STEEL, {}),
    ("WT2472", 1, RECEPTION, "L1-Lobby", [("PT-WHT", "PAINT: Designer White")], {}),
    ("PWR-HC2", 2, RECEPTION, "L1-Lobby", [], {}),
    ("MA1-D", 2, RECEPTION, "L1-Lobby", [("FN-BLK", "FINISH: Black")], {}),
    ("CT72", 1, RECEPTION, "L1-Lobby", [], {}),
    "SUBTOTAL",
    ("HA6030", 24, OPEN, "L2-Zone A", DESK, {"MD": "Lift HA 60"}),
    ("HA6030", 18, OPEN, "L2-Zone B", DESK, {"MD": "Lift HA 60"}),
    ("HA7230", 6, OPEN, "L2-Team Leads", DESK, {"MD": "Lift HA 72"}),
    ("SP6015", 24, OPEN, "L2-Zone A", SCREEN, {}),
    ("SP6015", 18, OPEN, "L2-Zone B", SCREEN, {}),
    ("SP7215", 6, OPEN, "L2-Team Leads", SCREEN, {}),
    ("PWR-HC2", 42, OPEN, "L2-Zone A/B", [], {}),
    ("PWR-HC2", 6, OPEN, "L2-Team Leads", [], {}),
    ("MA1-D", 28, OPEN, "L2-Zone A/B", [("FN-SLV", "FINISH: Silver")], {}),
    ("MA2-D", 20, OPEN, "L2-Zone A/B", [("FN-SLV", "FINISH: Silver")], {}),
    ("CT60", 42, OPEN, "L2-Zone A/B", [], {}),
    ("CT72", 6, OPEN, "L2-Team Leads", [], {}),
    ("VT210-MB", 24, OPEN, "L2-Zone A", TASK_BLUE, {}),
    ("VT210-MB", 18, OPEN, "L2-Zone B", TASK_GREY, {}),
    ("VT210-HR", 6, OPEN, "L2-Team Leads", TASK_GREY[:2] + [("FR-BLK", "FRAME: Black")],
     {"notes": [("HR", "Headrest shipped loose, install on site")]}),
    ("PD1523-BF", 24, OPEN, "L2-Zone A", STEEL + [("CU-HB", "CUSHION: Harbor Blue")], {}),
    ("PD1523-BF", 18, OPEN, "L2-Zone B", STEEL + [("CU-FG", "CUSHION: Fog")], {}),
    ("LK1872-6", 6, OPEN, "L2-Core", STEEL[:1], {"PE": "Lockers 1-36"}),
    ("LF3630-3", 8, OPEN, "L2-Core", STEEL, {}),
    ("SC3666", 4, OPEN, "L2-Core", STEEL, {}),
    ("SC3666", 2, OPEN, "L2-Copy/Print", [("PT-WHT", "PAINT: Designer White")], {}),
    ("BK3672", 4, OPEN, "L2-Team Leads", [("PT-CHR", "PAINT: Charcoal")], {}),
    ("RT42X", 4, OPEN, "L2-Huddle", [("LM-DWH", "TOP: Designer White Laminate"),
                                     ("BS-BLK", "BASE: Black")], {}),
    ("GS10", 16, OPEN, "L2-Huddle", [("SH-HB", "SHELL: Harbor Blue")], {}),
    ("HT9642", 2, OPEN, "L2-Huddle", [("LM-DWH", "TOP: Designer White Laminate"),
                                      ("BS-BLK", "BASE: Black"),
                                      ("PR-4", "POWER: 4 Simplex, 4 USB-C")], {}),
    ("TS18-C", 8, OPEN, "L2-Huddle", [("SH-HB", "SHELL: Harbor Blue"),
                                      ("FR-BLK", "FRAME: Black")], {}),
    ("WB4872", 4, OPEN, "L2-Huddle", [], {}),
    ("HL2-1S", 4, OPEN, "L2-Lounge", LOUNGE, {}),
    ("OT2424", 2, OPEN, "L2-Lounge", [("VN-WAL", "TOP: Walnut Veneer, Natural")], {}),
    ("BK3672", 2, OPEN, "L2-Lounge", [("PT-WHT", "PAINT: Designer White")], {}),
    ("AP6066", 10, OPEN, "L2-Zone A/B", [("FB-SLT", "FELT: Slate")],
     {"notes": [("LAY", "Panel positions per plan sheet F-2.3")]}),
    "SUBTOTAL",
    ("CF14448", 1, BOARD, "L2-East", VENEER + [("PDU-2", "POWER: (2) Units, 4 Simplex Each")],
     {"S-": Decimal("58"), "P%": Decimal("66"), "PE": "Ships in 3 sections",
      "notes": [("SEAM", "Veneer book-matched across seams")]}),
    ("CC620", 14, BOARD, "L2-East",
     [("GR5-GRA", "FABRIC: Grade 5 Leather, Graphite"), ("FR-PAL", "BASE: Polished Aluminum")],
     {"MD": "Corvo Conference"}),
    ("CR7220", 1, BOARD, "L2-East", VENEER, {}),
    ("MS440", 6, BOARD, "L2-East",
     [("GR5-GRA", "FABRIC: Grade 5 Leather, Graphite"), ("FR-BLK", "FRAME: Black")], {}),
    ("PWR-HC2", 2, BOARD, "L2-East", [], {}),
    ("HA7230", 2, OFFICES, "L2-201/202", [("VN-WAL", "TOP: Walnut Veneer, Natural"),
                                          ("BS-BLK", "BASE: Black")], {"MD": "Lift HA 72"}),
    ("CR7220", 2, OFFICES, "L2-201/202", VENEER, {}),
    ("VT210-HR", 2, OFFICES, "L2-201/202",
     [("GR5-GRA", "FABRIC: Grade 5 Leather, Graphite"), ("FR-BLK", "FRAME: Black")], {}),
    ("MS440", 4, OFFICES, "L2-201/202",
     [("GR4-CL", "FABRIC: Grade 4 Vinyl, Clay"), ("FR-BLK", "FRAME: Black")], {}),
    ("CA3636", 6, BREAK, "L1-Cafe", [("LM-OAK", "TOP: Oak Laminate"), ("BS-BLK", "BASE: Black")],
     {}),
    ("GS10", 24, BREAK, "L1-Cafe", [("SH-CL", "SHELL: Clay")], {}),
    ("TS18-C", 6, BREAK, "L1-Cafe", [("SH-CL", "SHELL: Clay"), ("FR-BLK", "FRAME: Black")], {}),
    ("SC3666", 2, BREAK, "L1-Cafe", [("PT-WHT", "PAINT: Designer White")], {}),
]


def money(value):
    return str(value.quantize(CENT, rounding=ROUND_HALF_UP))


def plain(value):
    """A number as the parent writes percentages, weights and volumes: no trailing zeros."""
    return format(value.normalize(), "f")


def build_sif():
    rng = random.Random(SEED)
    header_totals = {"TL": Decimal(0), "TS": Decimal(0), "TP": Decimal(0),
                     "TW": Decimal(0), "TV": Decimal(0)}
    group = {"PL": Decimal(0), "SP": Decimal(0), "BP": Decimal(0)}
    last_area = None
    items = []
    record = 1000
    for line in LINES:
        if line == "SUBTOTAL":
            items.append(["PN=SUBTOTAL", "PD=Subtotal - " + last_area, "QT=1",
                          "PL=" + money(group["PL"]), "SP=" + money(group["SP"]),
                          "BP=" + money(group["BP"]), "TG=" + last_area])
            group = {key: Decimal(0) for key in group}
            continue
        pn, qty, area, zone, options, extras = line
        mc, pd, plist, weight, volume, model = CATALOG[pn]
        assert len(pd) <= 110, pn
        cust, deal = DISCOUNTS[mc]
        cust = extras.get("S-", cust)
        deal = extras.get("P%", deal)
        plist, weight, volume = Decimal(plist), Decimal(weight), Decimal(volume)
        sell = (plist * (1 - cust / 100)).quantize(CENT, rounding=ROUND_HALF_UP)
        buy = (plist * (1 - deal / 100)).quantize(CENT, rounding=ROUND_HALF_UP)
        qty = Decimal(qty)
        record += 1
        lines = ["PN=" + pn]
        # The parent leaves the record number out on lines added after the first save. It
        # must follow PN=, because every item line belongs to the item its PN= line opened.
        if rng.random() < 0.8:
            lines.append("RN=" + str(record))
        lines.append("PD=" + pd)
        if "PE" in extras:
            lines.append("PE=" + extras["PE"])
        model = extras.get("MD", model)
        if model:
            lines.append("MD=" + model)
        lines += ["MC=" + mc, "QT=" + str(qty), "PL=" + money(plist), "S-=" + plain(cust),
                  "SP=" + money(sell), "P%=" + plain(deal), "BP=" + money(buy),
                  "WT=" + plain(weight), "VO=" + plain(volume), "TG=" + area, "T2=" + zone]
        for code, text in options:
            lines += ["ON=" + code, "OD=" + text]
        for code, text in extras.get("notes", []):
            lines += ["AN=" + code, "AD=" + text]
        items.append(lines)
        for key, unit in (("TL", plist), ("TS", sell), ("TP", buy), ("TW", weight),
                          ("TV", volume)):
            header_totals[key] += qty * unit
        group["PL"] += qty * plist
        group["SP"] += qty * sell
        group["BP"] += qty * buy
        last_area = area
    head = ["SF=Harbor Point Offices.sp4", "ST=Calloway Marine Insurance - Harbor Point Offices",
            "DT=11/20/2026", "TM=14:32:05"]
    head += [key + "=" + money(value) for key, value in header_totals.items()]
    return head + [text for item in items for text in item]


def build_cif():
    return [
        "[CIF V4]",
        "DC=CMI-1044",
        "D1=Calloway Marine Insurance Group",
        "D2=Attn: Accounts Payable",
        "D3=400 Wharf Street, Suite 1200",
        "D4=",
        "D5=Harbor Point",
        "D6=ME",
        "D7=04110",
        "D8=USA",
        "D9=Renata Okafor",
        "DP=(207) 555-0142",
        "DF=(207) 555-0143",
        "PC=CMI-1044-HP",
        "P1=Calloway Marine Insurance Group",
        "P2=Harbor Point Offices, Levels 1 and 2",
        "P3=75 Pier Road",
        "P4=Receiving: Loading Dock B",
        "P5=Harbor Point",
        "P6=ME",
        "P7=04110",
        "P8=USA",
        "P9=Dale Whitcombe",
        "PP=(207) 555-0177",
        "PF=(207) 555-0178",
        "CO=HP-26-0419",
        "PT=Standard",
        "CP=CMI-PO-88231",
        "OT=New Installation",
        "AB=Renata Okafor, Facilities Director",
        "PA=CT-2026-117",
        "PR=2",
        "RD=20270115",
        "RI=20270118",
        "DB=Dealer Invoice",
        "TN=Deliver Level 2 before Level 1; the reception station installs last.",
        "TN=Certificate of insurance due to building management 5 days before delivery.",
        "K1=Marisol Quint",
        "L1=S-204",
        "K2=Owen Halvorsen",
        "L2=S-311",
        "U1=Harbor Point Office Interiors",
        "V1=D-1187",
        "U2=Northgate Installation Services",
        "V2=D-2045",
        "A1=350.00",
        "A1N=Design",
        "A2=1250.00",
        "A2N=Freight",
        "A3=2875.00",
        "A3N=Installation",
        "SN=Dock hours 7:00 AM to 3:00 PM; reserve the freight elevator 48 hours ahead.",
        "SN=Call Dale Whitcombe (207) 555-0177 one day before each delivery.",
    ]


def build_job():
    return [
        "[Printer]",
        "TempPrintDocument=demo.sif",
        "ActiveDocument=Harbor Point Offices.sp4",
        "Template Directory=../../resources/Print Templates",
        "Function=1",
        "PrintCopies=1",
        "FontName=Arial",
        "FontSize=8",
        "FontBold=0",
        "FontItalic=0",
        "FontUnderLine=0",
        "MarginLeft=500",
        "MarginRight=500",
        "MarginTop=500",
        "MarginBottom=500",
        "PrinterDeviceName=",
        "Box=0",
        "ShowLabel=1",
        "ShowColor=0",
        "ShowSubTotalOptions=0",
        "Cover Template=../../resources/Print Templates/Classic.cov",
        "Body Template=../../resources/Print Templates/Classic Customer.cst",
        "Summary Template=../../resources/Print Templates/Classic Customer.sum",
        "Cover Printable=1",
        "Body Printable=1",
        "Summary Printable=1",
        "PN=16,Part No.",
        "PD=34,Description",
        "MC=5,Mfg",
        "QT=5,Qty",
        "PL=9,List",
        "SP=9,Sell",
        "PLE=11,Ext List",
        "SPE=11,Ext Sell",
        "T1=14,Area",
        "",
        "[User Preferences]",
        "Company Name=Harbor Point Office Interiors",
        "Rounding Direction=0",
        "Rounding Level=2",
    ]


def write(name, lines):
    data = "".join(line + "\r\n" for line in lines).encode("cp1252")
    (HERE / name).write_bytes(data)


def read_lines(name):
    data = (HERE / name).read_bytes()
    assert data.endswith(b"\r\n"), name
    body = data[:-2].split(b"\r\n")
    assert all(b"\r" not in line and b"\n" not in line for line in body), name + ": bare CR/LF"
    return [line.decode("cp1252") for line in body]


def check_sif():
    """Re-adds the written SIF as the reader splits it: tag = 3 characters, value trimmed."""
    sums = {key: Decimal(0) for key in ("TL", "TS", "TP", "TW", "TV")}
    header = {}
    items = []
    for line in read_lines("demo.sif"):
        tag, value = line[:3], line[3:].strip()
        if tag == "PN=":
            items.append({"PN": value, "ON": 0, "AN": 0})
        elif tag[:2] in sums and tag[2] == "=":
            header[tag[:2]] = Decimal(value)
        elif tag in ("ON=", "AN="):
            items[-1][tag[:2]] += 1
        elif items:
            items[-1][tag[:2]] = value
    group = {"PL": Decimal(0), "SP": Decimal(0), "BP": Decimal(0)}
    subtotals = 0
    for index, item in enumerate(items):
        if item["PN"] == "SUBTOTAL":
            subtotals += 1
            assert index < len(items) - 1, "a subtotal row must not be the last item"
            assert item["QT"] == "1" and item["PD"].startswith("Subtotal - ")
            for key in group:
                assert Decimal(item[key]) == group[key], (item["PD"], key)
            group = {key: Decimal(0) for key in group}
            continue
        qty, plist = Decimal(item["QT"]), Decimal(item["PL"])
        sell = plist * (1 - Decimal(item["S-"]) / 100)
        buy = plist * (1 - Decimal(item["P%"]) / 100)
        assert Decimal(item["SP"]) == sell.quantize(CENT, rounding=ROUND_HALF_UP), item["PN"]
        assert Decimal(item["BP"]) == buy.quantize(CENT, rounding=ROUND_HALF_UP), item["PN"]
        assert item["ON"] <= 4 and len(item["PD"]) <= 110, item["PN"]
        for key, field in (("TL", "PL"), ("TS", "SP"), ("TP", "BP"), ("TW", "WT"),
                           ("TV", "VO")):
            sums[key] += qty * Decimal(item[field])
        for key in group:
            group[key] += qty * Decimal(item[key])
    assert subtotals == 2
    assert header == sums, (header, sums)
    return len(items), sums


def check_cif():
    lines = read_lines("Harbor Point Offices.cif")
    assert lines[0] == "[CIF V4]"
    tags = [line[:3] for line in lines[1:]]
    for tag in ("DC D1 D2 D3 D4 D5 D6 D7 D8 D9 DP DF PC P1 P2 P3 P4 P5 P6 P7 P8 P9 PP PF "
                "CO PT CP OT AB PA PR RD RI DB").split():
        assert tags.count(tag + "=") == 1, tag
    assert tags.count("TN=") == 2 and tags.count("SN=") == 2
    charges = [line for line in lines if line[:1] == "A" and line[1:2].isdigit()]
    digits = [int(line[1]) for line in charges]
    assert digits == sorted(digits), "charges must come in ascending order"


def main():
    write("job.ini", build_job())
    write("demo.sif", build_sif())
    write("Harbor Point Offices.cif", build_cif())
    read_lines("job.ini")
    check_cif()
    count, sums = check_sif()
    print(f"demo.sif: {count} items; " + ", ".join(f"{k}={v}" for k, v in sums.items()))


if __name__ == "__main__":
    main()
