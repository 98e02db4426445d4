"""The sensors: what a data byte pattern means, and what each language calls it.

A reply's data bytes are one unsigned number, so a sensor is a quantity that one factor and one
offset over that whole number give. Bit fields, signed values and the wide-range oxygen sensors,
whose replies hold two words, are not in this table.
"""

from fractions import Fraction as F

PERCENT_OF_BYTE = F(100, 255)
PERCENT_AROUND_MIDDLE = F(100, 128)
# The voltage is A / 200 and a fuel trim follows in B. Over both bytes the trim adds a 256th of a
# step to the voltage for each of its own: less than 0.005 V in all.
VOLT_BEFORE_TRIM = F(1, 200 * 256)

# Parameter, function name, data bytes, factor, offset, unit. Units are the names of UNITS below.
SENSORS = [
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
    (0x14, "volt.lambdabank1sensor1",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x15, "volt.lambdabank1sensor2",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x16, "volt.lambdabank1sensor3",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x17, "volt.lambdabank1sensor4",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x18, "volt.lambdabank2sensor1",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x19, "volt.lambdabank2sensor2",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x1A, "volt.lambdabank2sensor3",        2, VOLT_BEFORE_TRIM,      0,    "V"),
    (0x1B, "volt.lambdabank2sensor4",        2, VOLT_BEFORE_TRIM,      0,    "V"),
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
]

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
    0x14: ("O2 sensor B1 S1", "Lambdasonde B1 S1", "Sonde lambda B1 S1", "Sonda lambda B1 S1", "Sonda lambda B1 S1"),
    0x15: ("O2 sensor B1 S2", "Lambdasonde B1 S2", "Sonde lambda B1 S2", "Sonda lambda B1 S2", "Sonda lambda B1 S2"),
    0x16: ("O2 sensor B1 S3", "Lambdasonde B1 S3", "Sonde lambda B1 S3", "Sonda lambda B1 S3", "Sonda lambda B1 S3"),
    0x17: ("O2 sensor B1 S4", "Lambdasonde B1 S4", "Sonde lambda B1 S4", "Sonda lambda B1 S4", "Sonda lambda B1 S4"),
    0x18: ("O2 sensor B2 S1", "Lambdasonde B2 S1", "Sonde lambda B2 S1", "Sonda lambda B2 S1", "Sonda lambda B2 S1"),
    0x19: ("O2 sensor B2 S2", "Lambdasonde B2 S2", "Sonde lambda B2 S2", "Sonda lambda B2 S2", "Sonda lambda B2 S2"),
    0x1A: ("O2 sensor B2 S3", "Lambdasonde B2 S3", "Sonde lambda B2 S3", "Sonda lambda B2 S3", "Sonda lambda B2 S3"),
    0x1B: ("O2 sensor B2 S4", "Lambdasonde B2 S4", "Sonde lambda B2 S4", "Sonda lambda B2 S4", "Sonda lambda B2 S4"),
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

# Units that a language writes in its own way.
UNIT_TEXTS = {
    "German": {"rpm": "1/min"},
    "French": {"rpm": "tr/min"},
}


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
    for number, (parameter, function, size, factor, offset, unit) in enumerate(SENSORS):
        scale, shift, unit_text = units.get(unit, METRIC.get(unit, (F(1), 0, unit)))
        factor = factor * scale
        offset = offset * scale + shift
        highest = factor * (256**size - 1) + offset
        fields = [
            ("Function", function),
            ("Source", "obd_%02X" % parameter),
            ("Factor", number_text(factor)),
            ("Offset", number_text(offset)),
            ("Min", number_text(offset)),
            ("Max", number_text(highest)),
            ("Caption", CAPTIONS[parameter][column]),
            ("Unit", UNIT_TEXTS.get(language, {}).get(unit_text, unit_text)),
        ]
        lines += ["Sensor%d%s=%s" % (number, key, value) for key, value in fields]
    lines.append("Sensor%dFunction=0" % len(SENSORS))
    return "\n".join(lines) + "\n"
