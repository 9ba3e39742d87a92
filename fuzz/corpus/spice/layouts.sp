* title
.SUBCKT a 1 $ comment
* between
+ 2 $G_GND PARAMS: r=5 l = 1n

+ c=2
R1 1 2 {r}
.SUBCKT in (1,2)
.ENDS in
.ENDS
.subckt b x y ; c
* 5µF
C1 x y 1n
.ends b
