"""The sensors: what a data byte pattern means, and what each language calls it.

A reply's data bytes, or some of them, are one unsigned number, so a sensor is a quantity that one
factor and one offset over that number give. Bit fields and signed values are not in this table.
"""

import re
from fractions import Fraction as F
from typing import NamedTuple

PERCENT_OF_BYTE = F(100, 255)
PERCENT_AROUND_MIDDLE = F(100, 128)


class Sensor(NamedTuple):
    parameter: int
    function: str
    size: int        # bytes that the number is made of
    factor: F
    offset: int
    unit: str        # a name of UNITS below
    bytes: str = ""  # which of the reply's data bytes these are; empty: all


# The oxygen sensors as parameter 13 counts them.
OXYGEN = [(bank, sensor) for bank in (1, 2) for sensor in (1, 2, 3, 4)]


def oxygen(first, name, size, factor, offset, unit, which):
    """One quantity of all of them: one parameter each, from `first` on."""
    return [(first + i, name % place, size, factor, offset, unit, which)
            for i, place in enumerate(OXYGEN)]


SENSORS = [Sensor(*row) for row in [
    # Saved on/off states speak of sensors 1 to 90, so after a resume the first one stays off until
    # it is switched on: a count that no page shows.
    (0x30, "count.warmupstroublecodescleared", 1, F(1),                 0,    ""),
    (0x04, "value.loadcalculated",            1, PERCENT_OF_BYTE,       0,    "%"),
    (0x05, "temp.enginecoolant",              1, F(1),                  -40,  "°C"),
    (0x06, "value.shorttermfueltrimbank1",    1, PERCENT_AROUND_MIDDLE, -100, "%"),
    (0x07, "value.longtermfueltrimbank1",     1, PERCENT_AROUND_MIDDLE, -100, "%"),
    (0x08, "value.shorttermfueltrimbank2",    1, PERCENT_AROUND_MIDDLE, -100, "%"),
    (0x09, "value.longtermfueltrimbank2",     1, PERCENT_AROUND_MIDDLE, -100, "%"),
    (0x0A, "p.fuelrail",                      1, F(3),                  0,    "kPa"),
    (0x0B, "p.intakemanifold",                1, F(1),                  0,    "kPa air"),
    (0x0C, "rpm.engine",                      2, F(1, 4),               0,    "rpm"),
    (0x0D, "speed",                           1, F(1),                  0,    "km/h"),
    (0x0E, "angle.ignitiontiming",            1, F(1, 2),               -64,  "°"),
    (0x0F, "temp.intake",                     1, F(1),                  -40,  "°C"),
    (0x10, "value.airflowrate",               2, F(1, 100),             0,    "g/s"),
    (0x11, "value.throttle",                  1, PERCENT_OF_BYTE,       0,    "%"),
    *oxygen(0x14, "volt.lambdabank%dsensor%d", 1, F(1, 200), 0, "V", "0"),
    (0x1F, "time.enginestart",                2, F(1),                  0,    "s"),
    (0x21, "dist.milactivated",               2, F(1),                  0,    "km"),
    (0x22, "p.fuelrailtomanifold",            2, F(79, 1000),           0,    "kPa"),
    (0x23, "p.fuelraildirect",                2, F(10),                 0,    "kPa"),
    (0x2C, "value.commandedegr",              1, PERCENT_OF_BYTE,       0,    "%"),
    (0x2D, "value.egrerror",                  1, PERCENT_AROUND_MIDDLE, -100, "%"),
    (0x2E, "value.commandedevaporativepurge", 1, PERCENT_OF_BYTE,       0,    "%"),
    (0x2F, "value.fuellevel",                 1, PERCENT_OF_BYTE,       0,    "%"),
    (0x31, "dist.troublecodescleared",        2, F(1),                  0,    "km"),
    (0x33, "p.barometric",                    1, F(1),                  0,    "kPa air"),
    (0x3C, "temp.catalystbank1sensor1",       2, F(1, 10),              -40,  "°C"),
    (0x3D, "temp.catalystbank2sensor1",       2, F(1, 10),              -40,  "°C"),
    (0x3E, "temp.catalystbank1sensor2",       2, F(1, 10),              -40,  "°C"),
    (0x3F, "temp.catalystbank2sensor2",       2, F(1, 10),              -40,  "°C"),
    (0x42, "volt.obdcontrolmodule",           2, F(1, 1000),            0,    "V"),
    (0x43, "value.loadabsolute",              2, PERCENT_OF_BYTE,       0,    "%"),
    (0x44, "value.commandedequivalence",      2, F(2, 65536),           0,    ""),
    (0x45, "value.throttlerelative",          1, PERCENT_OF_BYTE,       0,    "%"),
    (0x46, "temp.ambient",                    1, F(1),                  -40,  "°C"),
    (0x47, "value.throttlepositionb",         1, PERCENT_OF_BYTE,       0,    "%"),
    (0x48, "value.throttlepositionc",         1, PERCENT_OF_BYTE,       0,    "%"),
    (0x49, "value.acceleratorpedalpositiond", 1, PERCENT_OF_BYTE,       0,    "%"),
    (0x4A, "value.acceleratorpedalpositione", 1, PERCENT_OF_BYTE,       0,    "%"),
    (0x4B, "value.acceleratorpedalpositionf", 1, PERCENT_OF_BYTE,       0,    "%"),
    (0x4C, "value.commandedthrottlecontrol",  1, PERCENT_OF_BYTE,       0,    "%"),
    (0x4D, "time.enginerunningmil",           2, F(1),                  0,    "min"),
    (0x4E, "time.dtcscleared",                2, F(1),                  0,    "min"),
    # A car has one of these three kinds: narrow-band ones with a trim, FF for those that control none,
    # wide-range ones that tell a voltage, and such that tell a current.
    *oxygen(0x14, "value.lambdatrimbank%dsensor%d", 1, PERCENT_AROUND_MIDDLE, -100, "%", "1!FF"),
    *oxygen(0x24, "value.lambdabank%dsensor%dwrvolt", 2, F(2, 65536), 0, "", "0-1"),
    *oxygen(0x24, "volt.lambdabank%dsensor%dwr", 2, F(8, 65536), 0, "V", "2-3"),
    *oxygen(0x34, "value.lambdabank%dsensor%dwramp", 2, F(2, 65536), 0, "", "0-1"),
    *oxygen(0x34, "amp.lambdabank%dsensor%dwr", 2, F(1, 256), -128, "mA", "2-3"),
]]

# Decimals that a value is worth; where a sensor is not named, its kind (up to the ".") is.
DECIMALS = {
    "rpm": 0, "speed": 0, "temp": 0, "time": 0, "dist": 0, "count": 0, "angle": 1,
    "value": 0, "value.airflowrate": 2, "value.commandedequivalence": 3,
    "p": 0, "p.fuelrailtomanifold": 1, "volt": 2, "amp": 2,
    **{"value.%stermfueltrimbank%d" % (term, bank): 1 for term in ("short", "long") for bank in (1, 2)},
    **{"value.lambdatrimbank%dsensor%d" % place: 1 for place in OXYGEN},
    **{"value.lambdabank%dsensor%dwr%s" % (*place, kind): 3 for place in OXYGEN
       for kind in ("volt", "amp")},
}
# The same in imperial units, where it is another number.
IMPERIAL_DECIMALS = {"p.intakemanifold": 1, "p.barometric": 1, "p.fuelrail": 1}

# Name of a unit: what it is multiplied with, what is then added, and the text shown.
METRIC = {"kPa air": (F(1), 0, "kPa")}

# The pound force over the square inch, and the inch of mercury at 13.5951 g/cm3 and 9.80665 m/s2,
# both in kPa; the pound in grams.
PSI = F("4.4482216152605") / F("0.00064516") / 1000
INCH_OF_MERCURY = F("25.4") * F("13.5951") * F("9.80665") / 1000
POUND = F("453.59237")
MILE = F("1.609344")

IMPERIAL = {
    "°C": (F(9, 5), 32, "°F"),
    "km/h": (1 / MILE, 0, "mph"),
    "km": (1 / MILE, 0, "mi"),
    "kPa": (1 / PSI, 0, "psi"),
    "kPa air": (1 / INCH_OF_MERCURY, 0, "inHg"),
    "g/s": (60 / POUND, 0, "lb/min"),
}

# Parameter: caption in English, German, French, Spanish, Italian; at most 18 characters fit a dial.
CAPTIONS = {
    0x04: ("Engine load", "Motorlast", "Charge moteur", "Carga del motor", "Carico motore"),
    0x05: ("Coolant", "Kühlmittel", "Liquide refroid.", "Refrigerante", "Liquido raffr."),
    0x06: ("Short trim bank 1", "Kurzzeittrim B1", "Corr. courte B1", "Ajuste corto B1", "Corr. breve B1"),
    0x07: ("Long trim bank 1", "Langzeittrim B1", "Corr. longue B1", "Ajuste largo B1", "Corr. lunga B1"),
    0x08: ("Short trim bank 2", "Kurzzeittrim B2", "Corr. courte B2", "Ajuste corto B2", "Corr. breve B2"),
    0x09: ("Long trim bank 2", "Langzeittrim B2", "Corr. longue B2", "Ajuste largo B2", "Corr. lunga B2"),
    0x0A: ("Fuel pressure", "Kraftstoffdruck", "Pression carburant", "Presión de comb.", "Press. carburante"),
    0x0B: ("Manifold pressure", "Saugrohrdruck", "Pression admission", "Presión colector", "Press. collettore"),
    0x0C: ("Engine speed", "Drehzahl", "Régime moteur", "Régimen del motor", "Giri motore"),
    0x0D: ("Speed", "Geschwindigkeit", "Vitesse", "Velocidad", "Velocità"),
    0x0E: ("Ignition timing", "Zündwinkel", "Avance allumage", "Avance encendido", "Anticipo accens."),
    0x0F: ("Intake air", "Ansaugluft", "Air d'admission", "Aire de admisión", "Aria aspirata"),
    0x10: ("Air flow", "Luftmasse", "Débit d'air", "Flujo de aire", "Portata aria"),
    0x11: ("Throttle", "Drosselklappe", "Papillon", "Mariposa", "Farfalla"),
    0x1F: ("Run time", "Laufzeit", "Durée de marche", "Tiempo de marcha", "Tempo di marcia"),
    0x21: ("Distance lamp on", "Strecke Lampe an", "Dist. avec voyant", "Dist. con testigo", "Dist. spia accesa"),
    0x22: ("Rail to manifold", "Raildruck relativ", "Press. rampe rel.", "Presión rampa rel.", "Press. rail rel."),
    0x23: ("Rail pressure", "Raildruck", "Pression de rampe", "Presión de rampa", "Pressione rail"),
    0x2C: ("EGR command", "AGR-Sollwert", "Consigne EGR", "Consigna EGR", "Comando EGR"),
    0x2D: ("EGR error", "AGR-Abweichung", "Écart EGR", "Error EGR", "Errore EGR"),
    0x2E: ("Evap. purge", "Tankentlüftung", "Purge canister", "Purga del cánister", "Spurgo canister"),
    0x2F: ("Fuel level", "Tankfüllung", "Niveau carburant", "Nivel combustible", "Livello carburante"),
    0x30: ("Warm-ups", "Warmläufe", "Cycles de chauffe", "Calentamientos", "Cicli riscald."),
    0x31: ("Dist. since clear", "Strecke s. Löschen", "Dist. après effac.", "Dist. tras borrar", "Dist. da azzeram."),
    0x33: ("Barometer", "Luftdruck", "Pression atmosph.", "Presión atmosf.", "Press. atmosferica"),
    0x3C: ("Cat. temp. B1 S1", "Kat-Temp. B1 S1", "Temp. cata. B1 S1", "Temp. cat. B1 S1", "Temp. cat. B1 S1"),
    0x3D: ("Cat. temp. B2 S1", "Kat-Temp. B2 S1", "Temp. cata. B2 S1", "Temp. cat. B2 S1", "Temp. cat. B2 S1"),
    0x3E: ("Cat. temp. B1 S2", "Kat-Temp. B1 S2", "Temp. cata. B1 S2", "Temp. cat. B1 S2", "Temp. cat. B1 S2"),
    0x3F: ("Cat. temp. B2 S2", "Kat-Temp. B2 S2", "Temp. cata. B2 S2", "Temp. cat. B2 S2", "Temp. cat. B2 S2"),
    0x42: ("Module voltage", "Bordspannung", "Tension module", "Tensión módulo", "Tensione centr."),
    0x43: ("Absolute load", "Absolute Last", "Charge absolue", "Carga absoluta", "Carico assoluto"),
    0x44: ("Lambda command", "Lambda-Sollwert", "Consigne lambda", "Consigna lambda", "Comando lambda"),
    0x45: ("Relative throttle", "Drosselkl. relativ", "Papillon relatif", "Mariposa relativa", "Farfalla relativa"),
    0x46: ("Outside air", "Außenluft", "Air extérieur", "Aire exterior", "Aria esterna"),
    0x47: ("Throttle B", "Drosselklappe B", "Papillon B", "Mariposa B", "Farfalla B"),
    0x48: ("Throttle C", "Drosselklappe C", "Papillon C", "Mariposa C", "Farfalla C"),
    0x49: ("Pedal D", "Fahrpedal D", "Pédale D", "Pedal D", "Pedale D"),
    0x4A: ("Pedal E", "Fahrpedal E", "Pédale E", "Pedal E", "Pedale E"),
    0x4B: ("Pedal F", "Fahrpedal F", "Pédale F", "Pedal F", "Pedale F"),
    0x4C: ("Throttle command", "Drosselkl.-Soll", "Consigne papillon", "Consigna mariposa", "Comando farfalla"),
    0x4D: ("Time lamp on", "Zeit Lampe an", "Durée avec voyant", "Tiempo con testigo", "Tempo spia accesa"),
    0x4E: ("Time since clear", "Zeit seit Löschen", "Durée après effac.", "Tiempo tras borrar", "Tempo da azzeram."),
}

# Those of the oxygen sensors, in front of their place, such as "B1 S2".
OXYGEN_NARROW = ("O2 sensor", "Lambdasonde", "Sonde lambda", "Sonda lambda", "Sonda lambda")
OXYGEN_TRIM = ("O2 trim", "Sondentrim", "Corr. sonde", "Ajuste sonda", "Corr. sonda")
OXYGEN_WIDE = ("Wide O2", "Breitband", "Large bande", "Banda ancha", "Banda larga")
OXYGEN_CURRENT = ("O2 current", "Sondenstrom", "Courant", "Corriente", "Corrente")

# Units that a language writes in its own way.
UNIT_TEXTS = {
    "German": {"rpm": "1/min"},
    "French": {"rpm": "tr/min"},
}


def oxygen_caption(function):
    """Of a sensor that CAPTIONS has not: all eight places have the same."""
    kind, _, name = function.partition(".")
    place = " B%s S%s" % re.match(r"lambda(?:trim)?bank(.)sensor(.)", name).groups()
    if kind == "volt":
        texts = (OXYGEN_WIDE if name.endswith("wr") else OXYGEN_NARROW)
    elif kind == "amp":
        texts = OXYGEN_CURRENT
    elif name.startswith("lambdatrim"):
        texts = OXYGEN_TRIM
    else:
        place += " (V)" if name.endswith("volt") else " (mA)"
        texts = ("Lambda",) * 5
    return tuple(text + place for text in texts)


def captions(sensor):
    """What a sensor is called in each language."""
    return CAPTIONS.get(sensor.parameter) or oxygen_caption(sensor.function)


def decimals(sensor, imperial):
    kind = sensor.function.partition(".")[0]
    usual = DECIMALS.get(sensor.function, DECIMALS[kind])
    return IMPERIAL_DECIMALS.get(sensor.function, usual) if imperial else usual


def number_text(value):
    """A number in decimal digits: in full when it ends, else with ten significant digits."""
    value = F(value)
    rest = value.denominator
    for prime in (2, 5):
        while rest % prime == 0:
            rest //= prime
    if rest == 1:
        places = 0
        while (value * 10**places).denominator != 1:
            places += 1
        digits = value * 10**places
    else:
        places = 10
        while abs(value) * 10 ** (places - 10) >= 1:
            places -= 1
        while abs(value) * 10 ** (places - 9) < 1:
            places += 1
        digits = F(round(value * 10**places))
    sign = "-" if digits < 0 else ""
    text = str(abs(int(digits))).rjust(places + 1, "0")
    if places == 0:
        return sign + text
    whole, part = text[:-places], text[-places:].rstrip("0")
    return sign + whole + ("." + part if part else "")


def sensor_file(column, language, units):
    """The text of a sensor file: captions of one column, quantities in the given units."""
    lines = ["; Made by languages/src/build.py from sensors.py.", "[SensorConfig]"]
    for number, sensor in enumerate(SENSORS):
        scale, shift, unit_text = units.get(sensor.unit, METRIC.get(sensor.unit, (F(1), 0, sensor.unit)))
        factor = sensor.factor * scale
        offset = sensor.offset * scale + shift
        highest = factor * (256**sensor.size - 1) + offset
        fields = [
            ("Function", sensor.function),
            ("Source", "obd_%02X" % sensor.parameter),
            ("Factor", number_text(factor)),
            ("Offset", number_text(offset)),
            ("Min", number_text(offset)),
            ("Max", number_text(highest)),
            ("Caption", captions(sensor)[column]),
            ("Unit", UNIT_TEXTS.get(language, {}).get(unit_text, unit_text)),
            *([("Bytes", sensor.bytes)] if sensor.bytes else []),
            ("Decimals", decimals(sensor, units is IMPERIAL)),
        ]
        lines += ["Sensor%d%s=%s" % (number, key, value) for key, value in fields]
    lines.append("Sensor%dFunction=0" % len(SENSORS))
    return "\n".join(lines) + "\n"
