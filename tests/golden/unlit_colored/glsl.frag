#version 150
uniform vec4 surfaceColor;
in vec4 oVertexColor;
out vec4 oColor;
void main(){ 
	vec4 ioVertexColor = oVertexColor;
	vec4 retoColor = vec4(0.0);
	vec4 albedo = surfaceColor;
	albedo *= ioVertexColor;
	vec3 lit = albedo.xyz;
	retoColor = vec4(lit,albedo.w);
	oColor = retoColor; 
}
