"""The icons: strokes on a grid of 48, in one line width."""

ICONS = {
    "menu": '<rect x="8" y="8" width="13" height="13" rx="2.5"/>'
            '<rect x="27" y="8" width="13" height="13" rx="2.5"/>'
            '<rect x="8" y="27" width="13" height="13" rx="2.5"/>'
            '<rect x="27" y="27" width="13" height="13" rx="2.5"/>',
    "previous": '<path d="M29 10 L15 24 L29 38"/>',
    "next": '<path d="M19 10 L33 24 L19 38"/>',
    "up": '<path d="M10 30 L24 16 L38 30"/>',
    "down": '<path d="M10 18 L24 32 L38 18"/>',
    "back": '<path d="M20 11 L9 22 L20 33"/><path d="M10 22 H30 a9 9 0 0 1 9 9 V38"/>',
    "parent": '<path d="M6 38 V12 a2 2 0 0 1 2-2 h10 l4 5 h18 a2 2 0 0 1 2 2 V38'
              ' a2 2 0 0 1 -2 2 H8 a2 2 0 0 1 -2 -2 z"/>'
              '<path d="M24 34 V22"/><path d="M18.5 27 L24 21.5 L29.5 27"/>',
    "folder": '<path d="M6 38 V12 a2 2 0 0 1 2-2 h10 l4 5 h18 a2 2 0 0 1 2 2 V38'
              ' a2 2 0 0 1 -2 2 H8 a2 2 0 0 1 -2 -2 z"/>',
    "harddisk": '<rect x="9" y="5" width="30" height="38" rx="3"/><circle cx="24" cy="20" r="9"/>'
                '<circle cx="24" cy="20" r="1.2" fill="COLOR"/><path d="M16 36 H26"/>',
    "cddrive": '<circle cx="24" cy="24" r="18"/><circle cx="24" cy="24" r="5"/>'
               '<path d="M12.5 24 A11.5 11.5 0 0 1 24 12.5"/>',
    "removeable": '<rect x="12" y="18" width="24" height="25" rx="3"/><path d="M17 18 V6 H31 V18"/>'
                  '<path d="M21.5 11 v1 M26.5 11 v1"/>',
    "playlist": '<path d="M6 12 H30 M6 22 H30 M6 32 H18"/><path d="M28 39 V21 L41 18 V35"/>'
                '<ellipse cx="24.5" cy="39" rx="3.8" ry="3.2"/>'
                '<ellipse cx="37.5" cy="35" rx="3.8" ry="3.2"/>',
    "shortcuts": '<path d="M27 5 L12 27 H23 L20 43 L36 20 H25 z"/>',
    "dashboard": '<path d="M10.5 38 A19 19 0 1 1 37.5 38"/><path d="M24 27 L34 16"/>'
                 '<circle cx="24" cy="27" r="3" fill="COLOR"/>'
                 '<path d="M9 25 h3 M24 9.5 v3 M36 25 h3"/>',
    "engine": '<path d="M13 19 V14 H29 L35 20 H38 V25 H42 V20 H44 V36 H42 V31 H38 V36'
              ' L33 39 H19 L13 33 H9 V37 H7 V21 H9 V25 H13 z" transform="translate(-1.5 -1)"/>'
              '<path d="M16 8 H26 M21 8 V13"/>',
    "trims": '<path d="M6 24 H42" stroke-opacity="0.45"/>'
             '<path d="M6 24 C10 8 15 8 19 24 S28 40 32 24 S39 12 42 16"/>',
    "chart": '<path d="M8 7 V40 H42"/><path d="M14 32 L21 21 L28 27 L39 12"/>',
    "codes": '<path d="M24 7 L43 40 H5 z"/><path d="M24 19 V29"/>'
             '<circle cx="24" cy="34.5" r="1.2" fill="COLOR"/>',
    "freeze": '<path d="M24 5 V43 M7.5 14.5 L40.5 33.5 M40.5 14.5 L7.5 33.5"/>'
              '<path d="M18 8 L24 14 L30 8 M18 40 L24 34 L30 40"/>'
              '<path d="M7.5 21.5 L16 19.5 L13.5 11 M40.5 26.5 L32 28.5 L34.5 37"/>'
              '<path d="M40.5 21.5 L32 19.5 L34.5 11 M7.5 26.5 L16 28.5 L13.5 37"/>',
    "sensors": '<rect x="6" y="8" width="36" height="14" rx="7"/><circle cx="35" cy="15" r="3.2"'
               ' fill="COLOR"/><rect x="6" y="27" width="36" height="14" rx="7"/>'
               '<circle cx="13" cy="34" r="3.2"/>',
    "media": '<path d="M18 36 V10 L39 6 V32"/><ellipse cx="13" cy="36" rx="5.5" ry="4.5"/>'
             '<ellipse cx="34" cy="32" rx="5.5" ry="4.5"/>',
    "system": '<circle cx="24" cy="24" r="6"/>'
              '<path d="M24 5 V11 M24 37 V43 M5 24 H11 M37 24 H43 M10.6 10.6 L14.8 14.8'
              ' M33.2 33.2 L37.4 37.4 M37.4 10.6 L33.2 14.8 M14.8 33.2 L10.6 37.4"/>'
              '<circle cx="24" cy="24" r="13"/>',
    "settings": '<path d="M6 12 H42 M6 24 H42 M6 36 H42"/><circle cx="16" cy="12" r="4.5"'
                ' fill="BACK"/><circle cx="32" cy="24" r="4.5" fill="BACK"/>'
                '<circle cx="20" cy="36" r="4.5" fill="BACK"/>',
    "connect": '<path d="M24 6 V14 M16 6 V14 M32 6 V14" /><path d="M11 14 H37 V21'
               ' a13 13 0 0 1 -26 0 z"/><path d="M24 34 V43"/>',
    "disconnect": '<path d="M24 6 V10 M16 6 V12 M32 6 V14"/><path d="M11 14 H37 V21'
                  ' a13 13 0 0 1 -26 0 z"/><path d="M24 34 V43"/><path d="M6 42 L42 6"/>',
    "find": '<circle cx="21" cy="21" r="13"/><path d="M30.5 30.5 L42 42"/>',
    "language": '<circle cx="24" cy="24" r="18"/><ellipse cx="24" cy="24" rx="8" ry="18"/>'
                '<path d="M6 24 H42 M9 14.5 H39 M9 33.5 H39"/>',
    "panel": '<rect x="5" y="8" width="38" height="32" rx="4"/><path d="M24 8 V40 M5 24 H43"/>',
    "day": '<circle cx="24" cy="24" r="8.5"/><path d="M24 4 V9 M24 39 V44 M4 24 H9 M39 24 H44'
           ' M9.9 9.9 L13.4 13.4 M34.6 34.6 L38.1 38.1 M38.1 9.9 L34.6 13.4 M13.4 34.6 L9.9 38.1"/>',
    "night": '<path d="M38 29 A17 17 0 1 1 20 9 A13.5 13.5 0 0 0 38 29 z"/>',
    "demo": '<circle cx="24" cy="24" r="18"/><path d="M19.5 15.5 L33 24 L19.5 32.5 z"/>',
    "keyboard": '<rect x="4" y="11" width="40" height="26" rx="4"/>'
                '<path d="M11.5 18.5 h1 M19.5 18.5 h1 M27.5 18.5 h1 M35.5 18.5 h1'
                ' M11.5 24.5 h1 M19.5 24.5 h1 M27.5 24.5 h1 M35.5 24.5 h1 M15 31 H33"/>',
    "minimise": '<rect x="6" y="7" width="36" height="34" rx="4"/>'
                '<path d="M14 33 H34"/>',
    "end": '<path d="M16.5 11 A16 16 0 1 0 31.5 11"/><path d="M24 5 V23"/>',
    "read": '<path d="M24 6 V29"/><path d="M14 20 L24 30 L34 20"/><path d="M7 33 V41 H41 V33"/>',
    "clear": '<path d="M7 12 H41 M18 12 V7 H30 V12 M11 12 L14 42 H34 L37 12'
             ' M20 20 V34 M28 20 V34"/>',
    "pause": '<rect x="11" y="8" width="8" height="32" rx="2"/>'
             '<rect x="29" y="8" width="8" height="32" rx="2"/>',
    "snapshot": '<path d="M6 14 H14 L18 8 H30 L34 14 H42 V40 H6 z"/>'
                '<circle cx="24" cy="26" r="8"/>',
    "yes": '<path d="M8 25 L19 36 L40 12"/>',
    "no": '<path d="M11 11 L37 37 M37 11 L11 37"/>',
    "diagnosis": '<circle cx="21" cy="21" r="14.5"/><path d="M31.5 31.5 L42 42"/>'
                 '<path d="M11 22 H16 L19 15 L23 28 L26 22 H31"/>',
    "vehicle": '<path d="M8 25 L12 13 a3 3 0 0 1 3-2 H33 a3 3 0 0 1 3 2 L40 25"/>'
               '<rect x="5" y="25" width="38" height="12" rx="3"/>'
               '<path d="M9 37 V42 H14 V37 M34 37 V42 H39 V37 M12.5 31 h1 M34.5 31 h1"/>',
    "tests": '<path d="M18 6 H30 M20.5 6 V18 L9.5 38 a3 3 0 0 0 2.6 4.5 H35.9 a3 3 0 0 0 2.6-4.5'
             ' L27.5 18 V6 M15 29 H33"/>',
    "reports": '<path d="M11 5 H29 L38 14 V43 H11 z"/><path d="M29 5 V14 H38 M18 22 H31 M18 29 H31'
               ' M18 36 H26"/>',
    "view": '<path d="M4 24 C12 10 36 10 44 24 C36 38 12 38 4 24 z"/><circle cx="24" cy="24" r="6"/>',
    # How an entry of a list stands.
    "mark-good": '<circle cx="24" cy="24" r="18"/><path d="M15.5 24.5 L22 31 L33 17.5"/>',
    "mark-bad": '<path d="M24 6 L44 41 H4 z"/><path d="M24 19 V29"/>'
                '<circle cx="24" cy="35" r="1.2" fill="COLOR"/>',
    "mark-open": '<circle cx="24" cy="24" r="18"/><path d="M24 13 V24 L31.5 28.5"/>',
    "mark-none": '<circle cx="24" cy="24" r="3" fill="COLOR"/>',
    "warning": '<path d="M24 6 L44 41 H4 z"/><path d="M24 19 V29"/>'
               '<circle cx="24" cy="35" r="1.2" fill="COLOR"/>',
    "info": '<circle cx="24" cy="24" r="18"/><path d="M24 22 V33"/>'
            '<circle cx="24" cy="15.5" r="1.2" fill="COLOR"/>',
    "query": '<circle cx="24" cy="24" r="18"/><path d="M18 19.5 a6 6 0 1 1 8.5 5.4'
             ' c-2 1 -2.5 2 -2.5 4"/><circle cx="24" cy="34" r="1.2" fill="COLOR"/>',
}


def icon(name, x, y, size, color, back="none", stroke=3.2):
    """The strokes of an icon as part of a picture, its corner at x, y."""
    shape = ICONS[name].replace("COLOR", color).replace("BACK", back)
    return (f'<g transform="translate({x} {y}) scale({size / 48:.5f})" fill="none"'
            f' stroke="{color}" stroke-width="{stroke}" stroke-linecap="round"'
            f' stroke-linejoin="round">{shape}</g>')
