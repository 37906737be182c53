/* One channel: its pressure, unit and temperature. */
VARIABLE pressure { LABEL [pressure]; TYPE FLOAT; }
VARIABLE press_unit { LABEL [unknown_key]; TYPE ENUMERATED { { 1, "bar" } } }
VARIABLE temperature { LABEL "|de|Temperatur"; TYPE FLOAT; VALIDITY pressure > treshold; }
/* The rest of this file is lost to the converter: */
ÿ VARIABLE lost { TYPE FLOAT; }
