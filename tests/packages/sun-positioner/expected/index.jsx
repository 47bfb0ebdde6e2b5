<root>
	<node
		orientation={{ w: 0.375000, x: 0.625000, y: -0.216506, z: 0.649519 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 1.000000, g: 1.000000, b: 1.000000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 1.000000, g: 1.000000, b: 1.000000 }}>
		</light>
	</node>
	<node
		orientation={{ w: 0.375000, x: -0.625000, y: 0.216506, z: -0.649519 }}
		position={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>
		<light
			{...{ lighttype: "directional" }}
			diffuse={{ r: 0.800000, g: 0.800000, b: 0.800000 }}
			direction={{ x: 0, y: -1, z: 0 }}
			specular={{ r: 0.800000, g: 0.800000, b: 0.800000 }}>
		</light>
	</node>
</root>

