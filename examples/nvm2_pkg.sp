* Package of the example memory: a resistance, an inductance and a capacitance for each ball.
.subckt nvm2_pkg bga_a1 die_a1 bga_a2 die_a2 bga_a3 die_a3 bga_a4 die_a4 bga_b1 die_b1 bga_c1 die_c1 bga_c2 die_c2
r_a1 bga_a1 m_a1 40m
l_a1 m_a1 die_a1 0.8n
c_a1 die_a1 0 0.3p
r_a2 bga_a2 m_a2 40m
l_a2 m_a2 die_a2 0.8n
c_a2 die_a2 0 0.3p
r_a3 bga_a3 m_a3 40m
l_a3 m_a3 die_a3 0.8n
c_a3 die_a3 0 0.3p
r_a4 bga_a4 m_a4 40m
l_a4 m_a4 die_a4 0.8n
c_a4 die_a4 0 0.3p
r_b1 bga_b1 m_b1 40m
l_b1 m_b1 die_b1 0.8n
c_b1 die_b1 0 0.3p
r_c1 bga_c1 m_c1 40m
l_c1 m_c1 die_c1 0.8n
c_c1 die_c1 0 0.3p
r_c2 bga_c2 m_c2 40m
l_c2 m_c2 die_c2 0.8n
c_c2 die_c2 0 0.3p
.ends
