* On-die power network of the example memory.
.subckt nvm2_pdn vdd_pkg vss_pkg vdd_die vss_die
r_vdd vdd_pkg vdd_die 15m
r_vss vss_pkg vss_die 15m
c_die vdd_die m_die 200p
r_die m_die vss_die 20m
.ends
