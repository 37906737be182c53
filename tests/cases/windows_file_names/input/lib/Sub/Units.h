#line 1
VARIABLE unit { TYPE INTEGER; }
