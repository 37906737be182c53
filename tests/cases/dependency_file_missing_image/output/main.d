main.ddl.xml: main.ddl img/pump.png img/valve.png
main.ddl:
img/pump.png:
img/valve.png:
