#line 1
