"""What the labels of a diagnosis can show at their longest, to be measured."""

PARTS = ["Protocol", "Battery voltage", "Supported data", "Monitors", "Monitors of this drive",
         "Vehicle number (VIN)", "Calibrations", "Names of the control units", "Stored codes",
         "Pending codes", "Permanent codes", "Freeze frames", "Distance with lamp on",
         "Time with lamp on", "Distance since clear", "Time since clear", "Odometer", "Tests"]
LACKS = ["Not supported by this vehicle", "No answer", "Refused by the vehicle", "Could not be read",
         "The link was lost before", "Cancelled before"]
OUTCOMES = ["Not diagnosed yet", "Diagnosing", "Diagnosis complete", "Diagnosis cancelled",
            "Diagnosis ended early", "As it was before the codes were cleared"]
CHECKS = ["Check digit correct", "Check digit wrong", "Has no check digit", "Not a valid number"]
VERDICTS = ["Ready for inspection", "Ready for inspection, one monitor open",
            "Not ready: the lamp is on", "Not ready: %1 monitors open",
            "Not ready: the lamp is on, %1 monitors open"]
SEVERITIES = ["You can drive on", "Have it seen soon", "Stop the car safely", "Manufacturer's own code"]

REPORT = ["There is nothing to report: no vehicle is connected", "Reading live values"]

# Words, or texts that come as they are, and whether a reason may stand there in their place.
SHOWN = {"vin": ([], ["WDB88MWGH8W888888"], True), "vincheck": (CHECKS, [], True),
         "protocol": ([], ["AUTO, ISO 15765-4 (CAN 11/500)"], True),
         "ready": (VERDICTS, [], True), "severity": (SEVERITIES, [], False),
         "stored": ([], ["188"], True), "pending": ([], ["188"], True), "permanent": ([], ["188"], True),
         "selected": ([], ["W" * 30], False), "time": ([], ["12:58:58 PM , 28.08.2028"], False)}


def shown(name, translations):
    """`translations` puts a word into all languages."""
    if name == "progress":
        return ([text for word in OUTCOMES for text in translations(word)]
                + [text + "  18/18" for word in PARTS for text in translations(word)])
    if name == "file":
        return (["2028-12-28 12-58-58 WDB88MWGH8W888888.html"] + shown("progress", translations)
                + [text for word in REPORT for text in translations(word)])
    words, texts, lack = SHOWN[name]
    return texts + [text.replace("%1", "11") for word in words + (LACKS if lack else [])
                    for text in translations(word)]
