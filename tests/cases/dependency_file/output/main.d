main.xml: main.ddl my\ lib/defs.h base.ddl texts.dct wiring\ $$1\#2.gif
main.ddl:
my\ lib/defs.h:
base.ddl:
texts.dct:
wiring\ $$1\#2.gif:
