"""Screenshots of the editor, made by the program, with numbers added beside the controls."""
from PIL import Image, ImageDraw, ImageFont

PICTURES = {}
FONT = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
PAPER = (255, 255, 255)


def picture(name):
    def keep(function):
        PICTURES[name] = function
        return function
    return keep


def screenshot(tool, folder, name, *arguments):
    path = folder / f"screenshot-{name}.png"
    tool.run("screenshot", *arguments, "-o", str(path))
    return Image.open(path).convert("RGB")


def enlarged(image, times):
    return image.resize((image.width * times, image.height * times), Image.LANCZOS)


def numbered(image, marks, radius):
    """Draws round labels on the picture: {text: (x, y)}."""
    drawing = ImageDraw.Draw(image)
    font = ImageFont.truetype(FONT, int(radius * 1.25))
    for text, (x, y) in marks.items():
        drawing.ellipse((x - radius, y - radius, x + radius, y + radius), fill=(255, 255, 255),
                        outline=(11, 95, 165), width=max(2, radius // 7))
        drawing.text((x, y), text, fill=(11, 95, 165), font=font, anchor="mm")
    return image


def column(tool, folder, name, setting, left, marks):
    image = screenshot(tool, folder, name, *setting).crop((left, 7, left + 125, 455))
    numbered(enlarged(image, 3), {t: (3 * x, 3 * y) for t, (x, y) in marks.items()}, 24).save(
        folder / f"{name}.png", optimize=True)


@picture("column-t46.png")
def column_t46(tool, folder):
    settings = ["--set", "HFreqL=12000", "--set", "HGainL=2", "--set", "MFreqL=1200", "--set",
                "MGainL=-1.5", "--set", "LFreqL=63", "--set", "LGainL=1.5", "--set", "LShelfL=On"]
    column(tool, folder, "column-t46", settings, 42,
           {"1": (13, 60), "2": (13, 161), "3": (13, 263), "4": (13, 378), "5": (61, 381),
            "6": (111, 381), "7": (82, 350)})


@picture("column-qb11.png")
def column_qb11(tool, folder):
    settings = ["--set", "QB11=On", "--set", "DriveL=4", "--set", "HpfL=30", "--set", "28kL=On"]
    column(tool, folder, "column-qb11", settings, 42,
           {"1": (48, 36), "2": (36, 135), "3": (38, 239), "4": (10, 362), "5": (115, 362),
            "6": (10, 398), "7": (115, 398)})


@picture("panel.png")
def panel(tool, folder):
    image = screenshot(tool, folder, "panel").crop((305, 0, 394, 487))
    marks = {"1": (76, 9), "2": (76, 46), "3": (76, 83), "4": (76, 120), "5": (80, 183),
             "6": (72, 295), "7": (60, 337), "8": (62, 400), "9": (60, 471)}
    numbered(enlarged(image, 3), {t: (3 * x, 3 * y) for t, (x, y) in marks.items()}, 21).save(
        folder / "panel.png", optimize=True)


@picture("row.png")
def row(tool, folder):
    image = screenshot(tool, folder, "row", "--preset", "Vox").crop((0, 487, 394, 505))
    large = enlarged(image, 5)
    page = Image.new("RGB", (large.width, large.height + 64), PAPER)
    page.paste(large, (0, 0))
    places = (8, 33, 59, 74, 100, 126, 197, 264, 287, 310, 333, 350, 370, 386)
    marks = {str(n): (5 * x, large.height + 36) for n, x in enumerate(places, start=1)}
    drawing = ImageDraw.Draw(page)
    for x, _ in marks.values():
        drawing.line((x, large.height - 4, x, large.height + 12), fill=(11, 95, 165), width=3)
    numbered(page, marks, 24).save(folder / "row.png", optimize=True)


@picture("front.png")
def front(tool, folder):
    large = enlarged(screenshot(tool, folder, "front", "--preset", "R101"), 2)
    marks = {"A": (110, 46), "B": (360, 46), "C": (610, 46), "D": (560, 942), "E": (1698, 318),
             "F": (790, 990)}
    numbered(large, marks, 20).save(folder / "front.png", optimize=True)


@picture("layouts.png")
def layouts(tool, folder):
    plain, one, both = (screenshot(tool, folder, f"layout{i}", *settings) for i, settings in
                        enumerate(([], ["--set", "QB11=On"],
                                   ["--set", "QB11=On", "--set", "2x=On"])))
    if [image.size for image in (plain, one, both)] != [(394, 505), (644, 505), (894, 505)]:
        raise SystemExit("the editor's sizes differ from those in the manual")
    gap, head = 24, 34
    page = Image.new("RGB", (plain.width + gap + one.width, 2 * (head + 505) + gap), PAPER)
    drawing, font = ImageDraw.Draw(page), ImageFont.truetype(FONT, 24)
    for image, name, x, y in ((plain, "T46 alone", 0, 0),
                              (one, "QB11 and T46", plain.width + gap, 0),
                              (both, "QB11, T46 and 2\u00d7T46", 0, head + 505 + gap)):
        drawing.text((x, y), name, fill=(11, 95, 165), font=font)
        page.paste(image, (x, y + head))
    page.save(folder / "layouts.png", optimize=True)


@picture("cover.png")
def cover(tool, folder):
    settings = ["QB11=On", "2x=On", "DriveL=4", "DriveR=4", "LFreqL=63", "LFreqR=63", "LGainL=1.5",
                "LGainR=1.5", "LShelfL=On", "LShelfR=On", "MFreqL2=2500", "MFreqR2=2500",
                "MGainL2=1", "MGainR2=1", "HFreqL=20000", "HFreqR=20000", "HGainL=2.5",
                "HGainR=2.5", "HShelfL=On", "HShelfR=On"]
    words = [word for setting in settings for word in ("--set", setting)]
    enlarged(screenshot(tool, folder, "cover", *words), 2).save(folder / "cover.png", optimize=True)
